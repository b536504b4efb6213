#pragma once

#include <iostream>

#include "frame/MissingComponents.h"
#include "frame/PlainHostUtility.h"
#include "platform/files/spreadsheet/xls/OpenXls.h"
#include "platform/system/windows/RegistryInstallFolder.h"
#include "platform/system/windows/RegistrySettingsStore.h"
#include "platform/system/windows/ShellProgramStarter.h"
#include "platform/ui/console/ConsoleToolkit.h"
#include "platform/ui/console/TextEventLog.h"
#include "server/DefaultHost.h"

namespace vlm::server {

/// The composition on Windows: settings and installation folder from the registry, programs through the shell, the
/// user's temporary folder as working folder. Dialogs are drawn on the console and close at once, until there are
/// windows for them.
class WindowsHost final : public DefaultHost {
public:
    WindowsHost();
    Library::Services Services() noexcept override {
        return {toolkit_, utility_, settings_, clock_, programs_, installFolder_, components_, workbooks_};
    }

private:
    /// Workbooks in binary records; a newer kind is refused as no workbook.
    struct XlsWorkbooks final : files::WorkbookOpener {
        std::unique_ptr<files::Workbook> Open(const std::string& path) const override { return files::OpenXls(path); }
    };

    ui::TextEventLog log_{std::cout};
    ui::ConsoleToolkit toolkit_{ui::ConsoleScript({}), log_};
    PlainHostUtility utility_;
    sys::RegistrySettingsStore settings_;
    sys::SystemClock clock_;
    sys::ShellProgramStarter programs_;
    sys::RegistryInstallFolder installFolder_;
    MissingComponents components_;
    XlsWorkbooks workbooks_;
};

}  // namespace vlm::server
