#pragma once

#include <set>
#include <string>
#include <vector>

#include "ado/AdoTypes.h"
#include "automation/Object.h"

namespace vlm::test {

/// How many objects of a test are alive, and what of their members nobody may see.
struct Foreign {
    int alive = 0;
    std::set<std::string> hidden;    // names of members
    std::vector<std::string> asked;  // names asked for, in order
};

/// Somebody else's automation object: one of ours behind a wall that lets through only IDispatch and what says that it
/// is a connection or a row set. Every object that it gives stands behind such a wall too.
class ForeignObject final : public com::Object<IDispatch> {
public:
    ForeignObject(com::Ref<IDispatch> inner, Foreign& world) : inner_(std::move(inner)), world_(world) {
        ++world_.alive;
    }

    HRESULT STDMETHODCALLTYPE GetTypeInfoCount(UINT* count) override { return inner_->GetTypeInfoCount(count); }
    HRESULT STDMETHODCALLTYPE GetTypeInfo(UINT, LCID, ITypeInfo**) override { return E_NOTIMPL; }
    HRESULT STDMETHODCALLTYPE GetIDsOfNames(REFIID reserved, LPOLESTR* names, UINT count, LCID locale,
                                            DISPID* ids) override {
        const std::string name = com::ToUtf8(com::WideView(names[0]));
        world_.asked.push_back(name);
        if (world_.hidden.count(name) != 0) return DISP_E_UNKNOWNNAME;
        return inner_->GetIDsOfNames(reserved, names, count, locale, ids);
    }
    HRESULT STDMETHODCALLTYPE Invoke(DISPID id, REFIID reserved, LCID locale, WORD flags, DISPPARAMS* parameters,
                                     VARIANT* result, EXCEPINFO* exception, UINT* argument) override {
        const HRESULT done = inner_->Invoke(id, reserved, locale, flags, parameters, result, exception, argument);
        if (SUCCEEDED(done) && result != nullptr && result->vt == VT_DISPATCH && result->pdispVal != nullptr) {
            auto inner = com::Ref<IDispatch>::Adopt(result->pdispVal);
            result->pdispVal = com::Make<ForeignObject>(std::move(inner), world_).Detach();
        }
        return done;
    }

private:
    ~ForeignObject() override { --world_.alive; }
    void* Find(const IID& iid) noexcept override {
        const bool isData = com::Same(iid, data::ado::kConnectionId) || com::Same(iid, data::ado::kRecordsetId);
        if (isData && com::Query<IUnknown>(inner_.Get(), iid)) return static_cast<IDispatch*>(this);
        return Object::Find(iid);
    }

    com::Ref<IDispatch> inner_;
    Foreign& world_;
};

/// An object of no members that only says which interface it offers.
class MarkedObject : public com::DispatchObject<IDispatch> {
public:
    MarkedObject(const GUID& offered, int& alive) : offered_(offered), alive_(alive) { ++alive_; }

protected:
    ~MarkedObject() override { --alive_; }

private:
    std::span<const com::Member> Members() const noexcept override { return {}; }
    void* Find(const IID& iid) noexcept override {
        if (com::Same(iid, offered_)) return static_cast<IDispatch*>(this);
        return DispatchObject::Find(iid);
    }

    const GUID offered_;
    int& alive_;
};

/// The references to an object.
inline ULONG ReferencesTo(IUnknown* object) {
    object->AddRef();
    return object->Release();
}

}  // namespace vlm::test
