#include <new>

#include "Classes.h"
#include "Module.h"
#include "TypeLibrary.h"
#include "automation/ErrorReport.h"
#include "automation/Object.h"
#include "server/VlmASLServicesLib.h"

namespace vlm::server {
namespace {

/// Makes the objects of one class.
class ClassFactory final : public com::Object<IClassFactory> {
public:
    explicit ClassFactory(const ClassEntry& entry) : entry_(entry) {}

    /// CLASS_E_NOAGGREGATION for an outer object: components stand alone.
    HRESULT STDMETHODCALLTYPE CreateInstance(IUnknown* outer, REFIID iid, void** object) override {
        if (object == nullptr) return E_POINTER;
        *object = nullptr;
        if (outer != nullptr) return CLASS_E_NOAGGREGATION;
        com::Ref<IUnknown> made;
        const HRESULT result = com::Guarded(kLibraryName, com::kIdOf<IClassFactory>, [&] { made = entry_.create(); });
        return FAILED(result) ? result : made->QueryInterface(iid, object);
    }
    HRESULT STDMETHODCALLTYPE LockServer(BOOL lock) override {
        Module::Get().Lock(lock != 0);
        return S_OK;
    }

private:
    const ClassEntry& entry_;
    Module::Alive alive_;
};

}  // namespace
}  // namespace vlm::server

using vlm::server::Module;

HRESULT STDAPICALLTYPE DllGetClassObject(REFCLSID classId, REFIID iid, void** object) {
    if (object == nullptr) return E_POINTER;
    *object = nullptr;
    const vlm::server::ClassEntry* entry = vlm::server::FindClass(classId);
    if (entry == nullptr) return CLASS_E_CLASSNOTAVAILABLE;
    using vlm::server::ClassFactory;
    const auto factory = vlm::com::Ref<ClassFactory>::Adopt(new (std::nothrow) ClassFactory(*entry));
    return factory ? factory->QueryInterface(iid, object) : E_OUTOFMEMORY;
}

HRESULT STDAPICALLTYPE DllCanUnloadNow() { return Module::Get().CanUnload() ? S_OK : S_FALSE; }

HRESULT STDAPICALLTYPE DllRegisterServer() { return vlm::server::RegisterClasses(); }

HRESULT STDAPICALLTYPE DllUnregisterServer() { return vlm::server::UnregisterClasses(); }

int32_t VLM_CALL VlmSetHost(const VlmHost* host) {
    bool done = false;
    const HRESULT result =
        vlm::com::Guarded(vlm::server::kLibraryName, vlm::com::kNoId, [&] { done = Module::Get().SetHost(host); });
    if (FAILED(result)) return result;
    return done ? S_OK : S_FALSE;
}
