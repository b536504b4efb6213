#include "ClassFactory.h"

#include "automation/ErrorReport.h"
#include "server/VlmASLServicesLib.h"

namespace vlm::server {

HRESULT ClassFactory::CreateInstance(IUnknown* outer, REFIID iid, void** object) {
    if (object == nullptr) return E_POINTER;
    *object = nullptr;
    if (outer != nullptr) return CLASS_E_NOAGGREGATION;
    com::Ref<IUnknown> made;
    const HRESULT result = com::Guarded(kLibraryName, com::kIdOf<IClassFactory>, [&] { made = entry_.create(); });
    return FAILED(result) ? result : made->QueryInterface(iid, object);
}

HRESULT ClassFactory::LockServer(BOOL lock) {
    Module::Get().Lock(lock != 0);
    return S_OK;
}

}  // namespace vlm::server
