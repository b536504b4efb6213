#include "system/Registry.h"

#include "values/Error.h"
#include "values/Utf16.h"

namespace vlm::sys::registry {

namespace {

std::wstring Wide(const std::string& utf8) { return text::ToUtf16<wchar_t>(utf8); }

}  // namespace

std::optional<std::string> Read(HKEY root, const std::string& key, const std::string& name) {
    constexpr DWORD kTexts = RRF_RT_REG_SZ;  // variables in it are replaced
    const std::wstring path = Wide(key);
    const std::wstring value = Wide(name);
    std::wstring text(256, L'\0');
    LSTATUS status = ERROR_MORE_DATA;
    while (status == ERROR_MORE_DATA) {
        auto bytes = static_cast<DWORD>(text.size() * sizeof(wchar_t));
        status = RegGetValueW(root, path.c_str(), value.c_str(), kTexts, nullptr, text.data(), &bytes);
        if (status == ERROR_SUCCESS) return text::FromUtf16(std::wstring_view(text.c_str()));
        text.resize(text.size() * 2);
    }
    return std::nullopt;
}

LSTATUS Write(HKEY root, const std::string& key, const std::string& name, const std::string& value) noexcept {
    try {
        const std::wstring wide = Wide(value);
        const auto bytes = static_cast<DWORD>((wide.size() + 1) * sizeof(wchar_t));
        return RegSetKeyValueW(root, Wide(key).c_str(), Wide(name).c_str(), REG_SZ, wide.c_str(), bytes);
    } catch (...) {
        return ERROR_OUTOFMEMORY;
    }
}

LSTATUS Remove(HKEY root, const std::string& key) noexcept {
    try {
        const LSTATUS status = RegDeleteTreeW(root, Wide(key).c_str());
        return status == ERROR_FILE_NOT_FOUND ? ERROR_SUCCESS : status;
    } catch (...) {
        return ERROR_OUTOFMEMORY;
    }
}

}  // namespace vlm::sys::registry

namespace vlm::sys {

namespace {

std::string KeyOf(const std::string& application, const std::string& section) {
    return "Software\\VB and VBA Program Settings\\" + application + "\\" + section;
}

}  // namespace

std::string RegistrySettingsStore::Get(const std::string& application, const std::string& section,
                                       const std::string& key, const std::string& defaultValue) const {
    return registry::Read(HKEY_CURRENT_USER, KeyOf(application, section), key).value_or(defaultValue);
}

void RegistrySettingsStore::Save(const std::string& application, const std::string& section, const std::string& key,
                                 const std::string& value) {
    // Without a name the value would become the section's own, which nobody reads.
    const bool named = !application.empty() && !section.empty() && !key.empty();
    const LSTATUS status = named ? registry::Write(HKEY_CURRENT_USER, KeyOf(application, section), key, value)
                                 : static_cast<LSTATUS>(ERROR_INVALID_NAME);
    if (status == ERROR_SUCCESS) return;
    throw Error("Impossibile salvare l'impostazione \"" + key + "\": errore di sistema " + std::to_string(status) +
                ".");
}

std::string RegistryInstallFolder::Path() const {
    constexpr const char* kKey = "Software\\Microsoft\\Windows\\CurrentVersion\\App Paths\\Aldra.exe";
    std::string folder = registry::Read(HKEY_LOCAL_MACHINE, kKey, "Path").value_or("");
    if (!folder.empty() && folder.back() == '\\') folder.pop_back();
    return folder;
}

}  // namespace vlm::sys
