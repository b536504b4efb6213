#pragma once

#include <cstdint>
#include <map>
#include <string>

#include "database/Connection.h"
#include "dialogs/Toolkit.h"
#include "frame/HostServices.h"
#include "system/Clock.h"
#include "system/InstallFolder.h"
#include "system/ProgramStarter.h"
#include "system/SettingsStore.h"
#include "values/Error.h"
#include "workbooks/Workbook.h"

namespace vlm {

/// The PIN that was last confirmed for each specialist, for the life of the loaded library. Shown and logged nowhere.
class PinCache {
public:
    /// "" when there is none.
    std::string Get(std::int32_t specialist) const {
        const auto found = pins_.find(specialist);
        return found == pins_.end() ? std::string() : found->second;
    }
    void Set(std::int32_t specialist, const std::string& pin) { pins_[specialist] = pin; }
    void Remove(std::int32_t specialist) { pins_.erase(specialist); }

private:
    std::map<std::int32_t, std::string> pins_;
};

/// The state that all components of the library share, and what they need of host and machine. There is one for each
/// load of the library; whoever makes it (the composition root) keeps the services alive longer.
///
/// The library-wide connection: setting it through any component sets it for all. Calls come on one thread.
class Library {
public:
    struct Services {
        ui::Toolkit& toolkit;
        HostUtility& utility;
        sys::SettingsStore& settings;
        sys::Clock& clock;
        sys::ProgramStarter& programs;
        sys::InstallFolder& installFolder;
        HostComponents& components;
        const files::WorkbookOpener& workbooks;
    };

    explicit Library(const Services& services) : services_(services) {}

    const data::ConnectionPtr& Connection() const noexcept { return connection_; }
    void SetConnection(data::ConnectionPtr connection) { connection_ = std::move(connection); }
    /// The connection for a database step; Error when none was set.
    data::Connection& RequireConnection() const {
        if (!connection_) throw Error("Connessione al database non impostata.");
        return *connection_;
    }

    ui::Toolkit& Toolkit() const noexcept { return services_.toolkit; }
    HostUtility& Utility() const noexcept { return services_.utility; }
    sys::SettingsStore& Settings() const noexcept { return services_.settings; }
    sys::Clock& Clock() const noexcept { return services_.clock; }
    sys::ProgramStarter& Programs() const noexcept { return services_.programs; }
    sys::InstallFolder& InstallFolder() const noexcept { return services_.installFolder; }
    HostComponents& Components() const noexcept { return services_.components; }
    const files::WorkbookOpener& Workbooks() const noexcept { return services_.workbooks; }
    /// PINs are kept for as long as the library is loaded.
    PinCache& Pins() noexcept { return pins_; }

private:
    Services services_;
    data::ConnectionPtr connection_;
    PinCache pins_;
};

}  // namespace vlm
