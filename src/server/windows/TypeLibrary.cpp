#include "TypeLibrary.h"

#include <string>

#include "Classes.h"
#include "automation/Bstr.h"
#include "server/VlmASLServicesLib.h"
#include "system/Registry.h"

namespace vlm::server {

namespace {

namespace registry = sys::registry;

/// The file that this code was loaded from.
std::wstring ModulePath() {
    HMODULE module = nullptr;
    GetModuleHandleExW(GET_MODULE_HANDLE_EX_FLAG_FROM_ADDRESS | GET_MODULE_HANDLE_EX_FLAG_UNCHANGED_REFCOUNT,
                       reinterpret_cast<LPCWSTR>(&ModulePath), &module);
    std::wstring path(32768, L'\0');
    path.resize(GetModuleFileNameW(module, path.data(), static_cast<DWORD>(path.size())));
    return path;
}

/// The type library in that file; nothing when it has none. `kind` says whether it is entered into the registry too.
com::Ref<ITypeLib> LoadOwnTypeLibrary(REGKIND kind) {
    com::Ref<ITypeLib> library;
    if (FAILED(LoadTypeLibEx(ModulePath().c_str(), kind, library.Receive()))) return {};
    return library;
}

std::string TextOf(const GUID& guid) {
    wchar_t text[40]{};
    StringFromGUID2(guid, text, 40);
    return com::ToUtf8(com::WideView(text));
}

std::string ProgrammaticName(const ClassEntry& entry) {
    return std::string(kLibraryName) + "." + std::string(entry.name);
}

std::string ClassKey(const ClassEntry& entry) { return "CLSID\\" + TextOf(entry.id); }

bool Write(const std::string& key, const std::string& value, const std::string& name = {}) {
    return registry::Write(HKEY_CLASSES_ROOT, key, name, value) == ERROR_SUCCESS;
}

bool WriteClass(const ClassEntry& entry, const std::string& path, const std::string& typeLibrary) {
    const std::string name = ProgrammaticName(entry);
    const std::string key = ClassKey(entry);
    return Write(name, name) && Write(name + "\\CLSID", TextOf(entry.id)) && Write(key, name) &&
           Write(key + "\\InprocServer32", path) && Write(key + "\\InprocServer32", "Apartment", "ThreadingModel") &&
           Write(key + "\\ProgID", name) && Write(key + "\\TypeLib", typeLibrary) && Write(key + "\\Programmable", "");
}

TLIBATTR AttributesOf(ITypeLib& library) {
    TLIBATTR* attributes = nullptr;
    if (FAILED(library.GetLibAttr(&attributes))) return {};
    const TLIBATTR copy = *attributes;
    library.ReleaseTLibAttr(attributes);
    return copy;
}

}  // namespace

UINT TypeInfoCount() noexcept { return 1; }

HRESULT GiveTypeInfo(const GUID& id, ITypeInfo** info) noexcept {
    if (info == nullptr) return E_POINTER;
    *info = nullptr;
    try {
        const com::Ref<ITypeLib> library = LoadOwnTypeLibrary(REGKIND_NONE);
        return library ? library->GetTypeInfoOfGuid(id, info) : TYPE_E_CANTLOADLIBRARY;
    } catch (...) {
        return E_OUTOFMEMORY;
    }
}

HRESULT RegisterClasses() noexcept {
    try {
        const com::Ref<ITypeLib> library = LoadOwnTypeLibrary(REGKIND_REGISTER);
        if (!library) return SELFREG_E_TYPELIB;
        const std::string typeLibrary = TextOf(AttributesOf(*library).guid);
        const std::string path = com::ToUtf8(com::WideView(ModulePath()));
        for (const ClassEntry& entry : Classes()) {
            if (WriteClass(entry, path, typeLibrary)) continue;
            UnregisterClasses();  // a program that finds half of it is worse off than one that finds nothing
            return SELFREG_E_CLASS;
        }
        return S_OK;
    } catch (...) {
        return E_OUTOFMEMORY;
    }
}

HRESULT UnregisterClasses() noexcept {
    try {
        HRESULT result = S_OK;
        for (const ClassEntry& entry : Classes()) {
            if (registry::Remove(HKEY_CLASSES_ROOT, ProgrammaticName(entry)) != ERROR_SUCCESS ||
                registry::Remove(HKEY_CLASSES_ROOT, ClassKey(entry)) != ERROR_SUCCESS) {
                result = SELFREG_E_CLASS;
            }
        }
        const com::Ref<ITypeLib> library = LoadOwnTypeLibrary(REGKIND_NONE);
        if (!library) return SELFREG_E_TYPELIB;
        const TLIBATTR attributes = AttributesOf(*library);
        UnRegisterTypeLib(attributes.guid, attributes.wMajorVerNum, attributes.wMinorVerNum, attributes.lcid,
                          attributes.syskind);  // one that was not registered is no failure
        return result;
    } catch (...) {
        return E_OUTOFMEMORY;
    }
}

}  // namespace vlm::server
