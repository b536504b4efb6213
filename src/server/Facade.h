#pragma once

#include "HostReferences.h"
#include "MemberTables.h"
#include "Module.h"
#include "TypeLibrary.h"
#include "ado/AdoTypes.h"
#include "automation/ErrorReport.h"
#include "automation/Object.h"
#include "server/VlmASLServicesLib.h"

namespace vlm::server {

/// A component as its host sees it: the interface in front of the component itself, which does the work. No exception
/// comes out of it: a failure is a result code with an error object whose source is the library.
template <typename Interface, typename... More>
class Facade : public com::DispatchObject<Interface, ISupportErrorInfo, IProvideClassInfo2, More...> {
public:
    /// `classId` is that of the component's class.
    explicit Facade(const GUID& classId) : classId_(classId) {}

    HRESULT STDMETHODCALLTYPE GetTypeInfoCount(UINT* count) override {
        if (count == nullptr) return E_POINTER;
        *count = TypeInfoCount();
        return S_OK;
    }
    HRESULT STDMETHODCALLTYPE GetTypeInfo(UINT index, LCID, ITypeInfo** info) override {
        if (info != nullptr) *info = nullptr;
        return index == 0 ? GiveTypeInfo(Interface::kId, info) : DISP_E_BADINDEX;
    }
    HRESULT STDMETHODCALLTYPE InterfaceSupportsErrorInfo(REFIID iid) override {
        return com::Same(iid, Interface::kId) ? S_OK : S_FALSE;
    }

    HRESULT STDMETHODCALLTYPE GetClassInfo(ITypeInfo** info) override { return GiveTypeInfo(classId_, info); }
    /// Of the events, when the class has some.
    HRESULT STDMETHODCALLTYPE GetGUID(DWORD kind, GUID* guid) override {
        if (guid == nullptr) return E_POINTER;
        *guid = com::kNoId;
        if (kind != GUIDKIND_DEFAULT_SOURCE_DISP_IID) return E_INVALIDARG;
        *guid = Events();
        return com::Same(*guid, com::kNoId) ? E_UNEXPECTED : S_OK;
    }

protected:
    std::span<const com::Member> Members() const noexcept override { return MembersOf<Interface>(); }
    virtual GUID Events() const noexcept { return com::kNoId; }
    void* Find(const IID& iid) noexcept override {
        if (com::Same(iid, com::kIdOf<IProvideClassInfo>)) return static_cast<IProvideClassInfo*>(this);
        return com::DispatchObject<Interface, ISupportErrorInfo, IProvideClassInfo2, More...>::Find(iid);
    }

    Library& Lib() const noexcept { return Module::Get().Lib(); }

    template <typename Body>
    static HRESULT Do(Body&& body) noexcept {
        return com::Guarded(kLibraryName, Interface::kId, std::forward<Body>(body));
    }
    template <typename Result, typename Body>
    static HRESULT Give(Result* result, Body&& body) noexcept {
        if (result == nullptr) return E_POINTER;
        *result = Result{};
        return Do([&] { *result = static_cast<Result>(body()); });
    }
    /// A host's object as the interface that its type names, where it offers that. `body` gives it with a reference.
    template <typename Body>
    static HRESULT GiveObject(IDispatch** result, const GUID& id, Body&& body) noexcept {
        return Give(result, [&] {
            auto object = com::Ref<IDispatch>::Adopt(body());
            com::Ref<IDispatch> wanted = com::Query<IDispatch>(object.Get(), id);
            return wanted ? wanted.Detach() : object.Detach();
        });
    }
    static HRESULT GiveText(BSTR* result, const std::string& text) noexcept {
        return Give(result, [&] { return com::Bstr(text).Detach(); });
    }
    template <typename Body>
    static HRESULT GiveTruth(VARIANT_BOOL* result, Body&& body) noexcept {
        return Give(result, [&] { return body() ? VARIANT_TRUE : VARIANT_FALSE; });
    }

    // The connection and the help object of a component that has them.
    template <typename Component>
    static HRESULT GiveConnection(IDispatch** result, const Component& component) noexcept {
        return GiveObject(result, data::ado::kConnectionId,
                          [&] { return HostConnection::ObjectOf(component.Connection()); });
    }
    template <typename Component>
    static HRESULT TakeConnection(IDispatch* value, Component& component) noexcept {
        return Do([&] { component.SetConnection(HostConnection::Of(value)); });
    }
    template <typename Component>
    static HRESULT GiveHelp(IDispatch** result, const Component& component) noexcept {
        return GiveObject(result, kCHMObjectId, [&] { return HelpReference::ObjectOf(component.CHMObject()); });
    }
    template <typename Component>
    static HRESULT TakeHelp(IDispatch* value, Component& component) noexcept {
        return Do([&] { component.SetCHMObject(HelpReference::Of(value)); });
    }

private:
    const GUID& classId_;
    Module::Alive alive_;
};

}  // namespace vlm::server
