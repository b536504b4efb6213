#include "system/Registry.h"

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
