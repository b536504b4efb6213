#include <dlfcn.h>
#include <filesystem>

#include "Composition.h"
#include "detect/DetectingOpener.h"
#include "dialogs/ToolkitModule.h"
#include "system/DesktopProgramStarter.h"
#include "values/Error.h"

namespace vlm::server::machine {

namespace {

/// The module of that name beside the file that this code was loaded from: "qt" is libVlmDialogsQt.so.
std::filesystem::path ModuleOf(std::string name) {
    Dl_info loaded{};
    if (dladdr(reinterpret_cast<const void*>(&Windows), &loaded) == 0 || loaded.dli_fname == nullptr) return {};
    name.front() = static_cast<char>(name.front() - 'a' + 'A');
    return std::filesystem::absolute(loaded.dli_fname).parent_path() / ("libVlmDialogs" + name + ".so");
}

}  // namespace

std::shared_ptr<ui::Toolkit> Windows(const std::string& name, sys::SettingsStore& settings) {
    if (name.empty() || name.find_first_not_of("abcdefghijklmnopqrstuvwxyz") != std::string::npos) return nullptr;
    const std::filesystem::path path = ModuleOf(name);
    if (!std::filesystem::exists(path)) return nullptr;
    // Windows cannot be unloaded while the program lives.
    void* const module = dlopen(path.c_str(), RTLD_NOW | RTLD_LOCAL | RTLD_NODELETE);
    void* const maker = module == nullptr ? nullptr : dlsym(module, "VlmMakeToolkit");
    if (maker == nullptr) throw Error(std::string("Le finestre non sono disponibili: ") + dlerror());
    std::shared_ptr<ui::Toolkit> toolkit;
    reinterpret_cast<ui::ToolkitMaker*>(maker)(settings, toolkit);
    return toolkit;
}

std::unique_ptr<sys::SettingsStore> Settings() {
    return std::make_unique<sys::IniSettingsStore>(sys::IniSettingsStore::DefaultPath());
}

std::unique_ptr<sys::ProgramStarter> Programs() { return std::make_unique<sys::DesktopProgramStarter>(); }

std::unique_ptr<sys::InstallFolder> InstallFolder() { return std::make_unique<sys::FixedInstallFolder>(); }

std::unique_ptr<files::WorkbookOpener> Workbooks() { return std::make_unique<files::DetectingOpener>(); }

}  // namespace vlm::server::machine
