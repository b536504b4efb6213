#include "TypeLibrary.h"

#include "windows/ThisModule.h"

namespace vlm::server {

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

}  // namespace vlm::server
