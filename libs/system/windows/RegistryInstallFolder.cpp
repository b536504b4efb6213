#include "system/RegistryInstallFolder.h"

#include "system/Registry.h"

namespace vlm::sys {

std::string RegistryInstallFolder::Path() const {
    constexpr const char* kKey = "Software\\Microsoft\\Windows\\CurrentVersion\\App Paths\\Aldra.exe";
    std::string folder = registry::Read(HKEY_LOCAL_MACHINE, kKey, "Path").value_or("");
    if (!folder.empty() && folder.back() == '\\') folder.pop_back();
    return folder;
}

}  // namespace vlm::sys
