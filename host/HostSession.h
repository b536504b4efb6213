#pragma once

#include <cstdint>
#include <functional>
#include <string>

#include "automation/LateBound.h"
#include "database/Connection.h"
#include "host/HostOptions.h"
#include "system/Clock.h"
#include "system/ProgramStarter.h"

namespace vlm::host {

/// The host's work with one clinic, as the options choose it: opens its database, makes a component, gives it what it
/// needs and shows its dialog.
class HostSession {
public:
    /// How the library meets the user. What it refers to outlives the session.
    struct Face {
        std::string toolkit;    // by the library's name for it
        bool readable = false;  // of the console: text for people
        std::function<void(std::int32_t kind, const std::string& text)> tell;
        sys::ProgramStarter* programs = nullptr;  // null: the library's own doing
        std::function<void(std::int32_t context)> showHelp;
    };

    HostSession(const HostOptions& options, const Face& face);

    /// Returns when the dialog has closed. UsageError for a component that there is not.
    void Open();

private:
    void GiveServices(const com::LateBound& component, const data::ConnectionPtr& connection);
    sys::Clock& Clock();

    HostOptions options_;
    Face face_;
    std::string workFolder_, installFolder_;
    sys::SystemClock systemClock_;
    sys::FixedClock fixedClock_;
};

}  // namespace vlm::host
