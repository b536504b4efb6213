#pragma once

#include "platform/automation/EventSource.h"
#include "server/Facade.h"

namespace vlm::server {

/// The patient import: so far its references to the host's objects and its event. The rest answers E_NOTIMPL.
class ASLImportPatientFacade final : public Facade<_ASLImportPatient, IConnectionPointContainer, IProvideClassInfo2> {
public:
    HRESULT STDMETHODCALLTYPE get_Connection(IDispatch** result) override { return GiveConnection(result, Lib()); }
    HRESULT STDMETHODCALLTYPE putref_Connection(IDispatch* value) override { return TakeConnection(value, Lib()); }
    HRESULT STDMETHODCALLTYPE get_LockSrv(IDispatch** result) override { return GiveReference(result, lockSrv_); }
    HRESULT STDMETHODCALLTYPE putref_LockSrv(IDispatch* value) override { return TakeReference(value, lockSrv_); }
    HRESULT STDMETHODCALLTYPE putref_Rights(IDispatch* value) override { return TakeReference(value, rights_); }
    HRESULT STDMETHODCALLTYPE get_Rights(IDispatch** result) override { return GiveReference(result, rights_); }
    HRESULT STDMETHODCALLTYPE ShowDialog() override { return Refuse("ShowDialog"); }
    HRESULT STDMETHODCALLTYPE InitDataStructure(IDispatch*) override { return Refuse("InitDataStructure"); }
    HRESULT STDMETHODCALLTYPE GetElementList(BSTR, IDispatch** result) override {
        return Refuse("GetElementList", result);
    }
    HRESULT STDMETHODCALLTYPE CreatePatient(IDispatch*, LONG* result) override {
        return Refuse("CreatePatient", result);
    }
    HRESULT STDMETHODCALLTYPE GetElementListSistemaTS(LONG, BSTR, IDispatch** result) override {
        return Refuse("GetElementListSistemaTS", result);
    }
    HRESULT STDMETHODCALLTYPE GetElementListEsentiRedditoSistemaTS(LONG, BSTR, IDispatch** result) override {
        return Refuse("GetElementListEsentiRedditoSistemaTS", result);
    }
    HRESULT STDMETHODCALLTYPE CreateEsenzione(IDispatch*, LONG* result) override {
        return Refuse("CreateEsenzione", result);
    }

    HRESULT STDMETHODCALLTYPE EnumConnectionPoints(IEnumConnectionPoints** points) override {
        return events_.Points(points);
    }
    HRESULT STDMETHODCALLTYPE FindConnectionPoint(REFIID iid, IConnectionPoint** point) override {
        return events_.Find(iid, point);
    }

    HRESULT STDMETHODCALLTYPE GetClassInfo(ITypeInfo** info) override {
        return GiveTypeInfo(kASLImportPatientClass, info);
    }
    HRESULT STDMETHODCALLTYPE GetGUID(DWORD kind, GUID* guid) override;

    /// Tells the host how much of a source is read, in percent.
    void RaiseReadingFile(std::int32_t value) { events_.Fire(kReadingFileId, com::Variant(value)); }

private:
    void* Find(const IID& iid) noexcept override;
    static HRESULT GiveReference(IDispatch** result, const com::Ref<IDispatch>& reference) noexcept {
        return Give(result, [&] { return reference.Share(); });
    }
    static HRESULT TakeReference(IDispatch* value, com::Ref<IDispatch>& reference) noexcept {
        reference = com::Ref<IDispatch>(value);
        return S_OK;
    }
    static HRESULT Refuse(const char* member) noexcept;
    template <typename Result>
    static HRESULT Refuse(const char* member, Result* result) noexcept {
        if (result == nullptr) return E_POINTER;
        *result = Result{};
        return Refuse(member);
    }

    com::Ref<IDispatch> lockSrv_;
    com::Ref<IDispatch> rights_;
    com::EventSource events_{*this, k__ASLImportPatientId};
};

}  // namespace vlm::server
