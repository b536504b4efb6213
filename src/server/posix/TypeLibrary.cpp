#include "TypeLibrary.h"

namespace vlm::server {

UINT TypeInfoCount() noexcept { return 0; }

HRESULT GiveTypeInfo(const GUID&, ITypeInfo** info) noexcept {
    if (info == nullptr) return E_POINTER;
    *info = nullptr;
    return E_NOTIMPL;
}

HRESULT RegisterClasses() noexcept { return S_OK; }
HRESULT UnregisterClasses() noexcept { return S_OK; }

}  // namespace vlm::server
