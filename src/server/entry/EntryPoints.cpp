#include <new>

#include "ClassFactory.h"
#include "Registration.h"
#include "server/VlmASLServicesLib.h"

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

HRESULT STDAPICALLTYPE VlmSetServices(const vlm::Library::Services* services) {
    try {
        return Module::Get().SetServices(services) ? S_OK : S_FALSE;
    } catch (...) {
        return E_OUTOFMEMORY;
    }
}
