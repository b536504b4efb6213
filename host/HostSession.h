#pragma once

#include <cstdint>
#include <functional>

#include "automation/LateBound.h"
#include "database/Connection.h"
#include "detect/DetectingOpener.h"
#include "dialogs/Toolkit.h"
#include "frame/PlainHostUtility.h"
#include "host/HostOptions.h"
#include "services/ReferenceHostComponents.h"
#include "system/Clock.h"
#include "system/InstallFolder.h"
#include "system/ProgramStarter.h"
#include "system/SettingsStore.h"

namespace vlm::host {

/// The host's work with one clinic, as the options choose it: opens its database, makes a component, gives it what it
/// needs and shows its dialog.
class HostSession {
public:
    /// What shows dialogs and starts programs for this host, and outlives the session.
    struct Face {
        ui::Toolkit& toolkit;
        sys::ProgramStarter& programs;
        sys::SettingsStore& settings;
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
    PlainHostUtility utility_;
    sys::FixedInstallFolder installFolder_;
    files::DetectingOpener workbooks_;
    sys::SystemClock systemClock_;
    sys::FixedClock fixedClock_;
    ReferenceHostComponents components_;
};

}  // namespace vlm::host
