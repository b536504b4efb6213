#pragma once

#include "frame/HostServices.h"
#include "frame/PinCache.h"
#include "platform/data/Connection.h"
#include "platform/files/spreadsheet/Workbook.h"
#include "platform/system/Clock.h"
#include "platform/system/InstallFolder.h"
#include "platform/system/ProgramStarter.h"
#include "platform/system/SettingsStore.h"
#include "platform/ui/Toolkit.h"

namespace vlm {

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
    data::Connection& RequireConnection() const;

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
