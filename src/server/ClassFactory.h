#pragma once

#include "Classes.h"
#include "Module.h"
#include "automation/Object.h"

namespace vlm::server {

/// Makes the objects of one class.
class ClassFactory final : public com::Object<IClassFactory> {
public:
    explicit ClassFactory(const ClassEntry& entry) : entry_(entry) {}

    /// CLASS_E_NOAGGREGATION for an outer object: components stand alone.
    HRESULT STDMETHODCALLTYPE CreateInstance(IUnknown* outer, REFIID iid, void** object) override;
    HRESULT STDMETHODCALLTYPE LockServer(BOOL lock) override;

private:
    const ClassEntry& entry_;
    Module::Alive alive_;
};

}  // namespace vlm::server
