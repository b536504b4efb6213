#include "Composition.h"
#include "system/Registry.h"
#include "system/ShellProgramStarter.h"
#include "win32/Win32Toolkit.h"
#include "xls/OpenXls.h"

namespace vlm::server::machine {

namespace {

/// Workbooks in binary records; a newer kind is refused as no workbook.
struct XlsWorkbooks final : files::WorkbookOpener {
    std::unique_ptr<files::Workbook> Open(const std::string& path) const override { return files::OpenXls(path); }
};

}  // namespace

/// The system's own controls, also for a host that names none.
std::shared_ptr<ui::Toolkit> Windows(const std::string& name, sys::SettingsStore& settings) {
    if (!name.empty() && name != "win32") return nullptr;
    return std::make_shared<ui::Win32Toolkit>(settings);
}

std::unique_ptr<sys::SettingsStore> Settings() { return std::make_unique<sys::RegistrySettingsStore>(); }

std::unique_ptr<sys::ProgramStarter> Programs() { return std::make_unique<sys::ShellProgramStarter>(); }

std::unique_ptr<sys::InstallFolder> InstallFolder() { return std::make_unique<sys::RegistryInstallFolder>(); }

std::unique_ptr<files::WorkbookOpener> Workbooks() { return std::make_unique<XlsWorkbooks>(); }

}  // namespace vlm::server::machine
