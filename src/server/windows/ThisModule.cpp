#include "windows/ThisModule.h"

namespace vlm::server {

std::wstring ModulePath() {
    HMODULE module = nullptr;
    GetModuleHandleExW(GET_MODULE_HANDLE_EX_FLAG_FROM_ADDRESS | GET_MODULE_HANDLE_EX_FLAG_UNCHANGED_REFCOUNT,
                       reinterpret_cast<LPCWSTR>(&ModulePath), &module);
    std::wstring path(32768, L'\0');
    path.resize(GetModuleFileNameW(module, path.data(), static_cast<DWORD>(path.size())));
    return path;
}

com::Ref<ITypeLib> LoadOwnTypeLibrary(REGKIND kind) {
    com::Ref<ITypeLib> library;
    if (FAILED(LoadTypeLibEx(ModulePath().c_str(), kind, library.Receive()))) return {};
    return library;
}

}  // namespace vlm::server
