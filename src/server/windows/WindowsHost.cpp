#include <filesystem>
#include <iostream>

#include "Module.h"
#include "console/ConsoleToolkit.h"
#include "console/TextEventLog.h"
#include "files/Paths.h"
#include "frame/PlainHostUtility.h"
#include "system/Registry.h"
#include "system/ShellProgramStarter.h"
#include "xls/OpenXls.h"

namespace vlm::server {

namespace {

std::string TemporaryFolder() {
    std::error_code failure;
    std::string folder = files::TextOf(std::filesystem::temp_directory_path(failure));
    if (!folder.empty() && folder.back() == '\\') folder.pop_back();
    return folder;
}

/// The composition on Windows: settings and installation folder from the registry, programs through the shell, the
/// user's temporary folder as working folder. Dialogs are drawn on the console and close at once, until there are
/// windows for them.
class WindowsHost final : public DefaultHost {
public:
    WindowsHost() : utility_(TemporaryFolder()) {}
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

}  // namespace

std::unique_ptr<DefaultHost> MakeDefaultHost() { return std::make_unique<WindowsHost>(); }

}  // namespace vlm::server
