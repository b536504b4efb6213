#include "server/Registration.h"

#ifdef _WIN32

#include <string>

#include "platform/automation/Bstr.h"
#include "platform/automation/Ref.h"
#include "server/Classes.h"
#include "server/VlmASLServicesLib.h"

namespace vlm::server {

namespace {

std::wstring ModulePath() {
    HMODULE module = nullptr;
    GetModuleHandleExW(GET_MODULE_HANDLE_EX_FLAG_FROM_ADDRESS | GET_MODULE_HANDLE_EX_FLAG_UNCHANGED_REFCOUNT,
                       reinterpret_cast<LPCWSTR>(&ModulePath), &module);
    std::wstring path(32768, L'\0');
    path.resize(GetModuleFileNameW(module, path.data(), static_cast<DWORD>(path.size())));
    return path;
}

std::wstring TextOf(const GUID& guid) {
    wchar_t text[40]{};
    StringFromGUID2(guid, text, 40);
    return text;
}

std::wstring ProgrammaticName(const ClassEntry& entry) {
    return com::ToWide(std::string(kLibraryName) + "." + std::string(entry.name));
}

/// The default value of a key, or one with a name.
bool Write(const std::wstring& key, const std::wstring& value, const wchar_t* name = nullptr) {
    HKEY handle = nullptr;
    if (RegCreateKeyExW(HKEY_CLASSES_ROOT, key.c_str(), 0, nullptr, 0, KEY_WRITE, nullptr, &handle, nullptr) !=
        ERROR_SUCCESS) {
        return false;
    }
    const auto bytes = static_cast<DWORD>((value.size() + 1) * sizeof(wchar_t));
    const LSTATUS status = RegSetValueExW(handle, name, 0, REG_SZ, reinterpret_cast<const BYTE*>(value.c_str()), bytes);
    RegCloseKey(handle);
    return status == ERROR_SUCCESS;
}

com::Ref<ITypeLib> LoadOwnTypeLibrary(REGKIND kind) {
    com::Ref<ITypeLib> library;
    LoadTypeLibEx(ModulePath().c_str(), kind, library.Receive());
    return library;
}

std::wstring TypeLibraryId(ITypeLib& library, TLIBATTR& copy) {
    TLIBATTR* attributes = nullptr;
    if (FAILED(library.GetLibAttr(&attributes))) return {};
    copy = *attributes;
    library.ReleaseTLibAttr(attributes);
    return TextOf(copy.guid);
}

bool WriteClass(const ClassEntry& entry, const std::wstring& path, const std::wstring& typeLibrary) {
    const std::wstring name = ProgrammaticName(entry);
    const std::wstring id = TextOf(entry.id);
    const std::wstring key = L"CLSID\\" + id;
    return Write(name, name) && Write(name + L"\\Clsid", id) && Write(key, name) &&
           Write(key + L"\\InprocServer32", path) &&
           Write(key + L"\\InprocServer32", L"Apartment", L"ThreadingModel") && Write(key + L"\\ProgID", name) &&
           Write(key + L"\\TypeLib", typeLibrary) && Write(key + L"\\Programmable", L"");
}

}  // namespace

HRESULT RegisterClasses() noexcept {
    try {
        const com::Ref<ITypeLib> library = LoadOwnTypeLibrary(REGKIND_REGISTER);
        if (!library) return TYPE_E_REGISTRYACCESS;
        TLIBATTR attributes{};
        const std::wstring typeLibrary = TypeLibraryId(*library, attributes);
        const std::wstring path = ModulePath();
        for (const ClassEntry& entry : Classes()) {
            if (!WriteClass(entry, path, typeLibrary)) return SELFREG_E_CLASS;
        }
        return S_OK;
    } catch (...) {
        return E_OUTOFMEMORY;
    }
}

HRESULT UnregisterClasses() noexcept {
    try {
        for (const ClassEntry& entry : Classes()) {
            RegDeleteTreeW(HKEY_CLASSES_ROOT, ProgrammaticName(entry).c_str());
            RegDeleteTreeW(HKEY_CLASSES_ROOT, (L"CLSID\\" + TextOf(entry.id)).c_str());
        }
        const com::Ref<ITypeLib> library = LoadOwnTypeLibrary(REGKIND_NONE);
        TLIBATTR attributes{};
        if (library && !TypeLibraryId(*library, attributes).empty()) {
            UnRegisterTypeLib(attributes.guid, attributes.wMajorVerNum, attributes.wMinorVerNum, attributes.lcid,
                              attributes.syskind);
        }
        return S_OK;
    } catch (...) {
        return E_OUTOFMEMORY;
    }
}

}  // namespace vlm::server

#else

namespace vlm::server {

HRESULT RegisterClasses() noexcept { return S_OK; }
HRESULT UnregisterClasses() noexcept { return S_OK; }

}  // namespace vlm::server

#endif
