#pragma once

#include <atomic>

#include "automation/Members.h"

namespace vlm::com {

/// The IUnknown of an object that offers `Main` and `More`, made with one reference. It ends with its last reference;
/// the virtual destructor comes after the interfaces' own functions, whose places it leaves alone.
template <typename Main, typename... More>
class Object : public Main, public More... {
public:
    Object(const Object&) = delete;
    Object& operator=(const Object&) = delete;

    HRESULT STDMETHODCALLTYPE QueryInterface(REFIID iid, void** object) override {
        if (object == nullptr) return E_POINTER;
        *object = Find(iid);
        if (*object == nullptr) return E_NOINTERFACE;
        AddRef();
        return S_OK;
    }
    /// The object's identity, whichever of its interfaces it is reached by. Adds no reference.
    IUnknown* AsUnknown() noexcept { return static_cast<Main*>(this); }
    ULONG STDMETHODCALLTYPE AddRef() override { return ++references_; }
    ULONG STDMETHODCALLTYPE Release() override {
        const ULONG left = --references_;
        if (left == 0) delete this;
        return left;
    }

protected:
    Object() = default;
    virtual ~Object() = default;

    /// Null for an interface that is not offered.
    virtual void* Find(const IID& iid) noexcept {
        void* found = nullptr;
        if (Same(iid, kIdOf<IUnknown>) || Same(iid, kIdOf<Main>)) found = static_cast<Main*>(this);
        ((Same(iid, kIdOf<More>) ? void(found = static_cast<More*>(this)) : void()), ...);
        return found;
    }

private:
    std::atomic<ULONG> references_{1};
};

/// An object that is called by name, by way of its table of members.
template <typename Main, typename... More>
class DispatchObject : public Object<Main, More...> {
public:
    HRESULT STDMETHODCALLTYPE GetTypeInfoCount(UINT* count) override {
        if (count == nullptr) return E_POINTER;
        *count = 0;
        return S_OK;
    }
    HRESULT STDMETHODCALLTYPE GetTypeInfo(UINT, LCID, ITypeInfo** info) override {
        if (info != nullptr) *info = nullptr;
        return E_NOTIMPL;
    }
    HRESULT STDMETHODCALLTYPE GetIDsOfNames(REFIID reserved, LPOLESTR* names, UINT count, LCID, DISPID* ids) override {
        if (!Same(reserved, kNoId)) return DISP_E_UNKNOWNINTERFACE;
        return FindIds(Members(), names, count, ids);
    }
    HRESULT STDMETHODCALLTYPE Invoke(DISPID id, REFIID reserved, LCID locale, WORD flags, DISPPARAMS* parameters,
                                     VARIANT* result, EXCEPINFO* exception, UINT* argument) override {
        if (!Same(reserved, kNoId)) return DISP_E_UNKNOWNINTERFACE;
        return com::Invoke(Members(), *this, {id, flags, parameters, result, exception, argument, locale});
    }

protected:
    virtual std::span<const Member> Members() const noexcept = 0;

    void* Find(const IID& iid) noexcept override {
        if (Same(iid, kIdOf<IDispatch>)) return static_cast<Main*>(this);
        return Object<Main, More...>::Find(iid);
    }
};

/// A new object in a reference of its own.
template <typename Class, typename... Arguments>
Ref<Class> Make(Arguments&&... arguments) {
    return Ref<Class>::Adopt(new Class(std::forward<Arguments>(arguments)...));
}

}  // namespace vlm::com
