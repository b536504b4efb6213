#pragma once

#include "Facade.h"
#include "automation/EventSource.h"
#include "import/ASLImportPatient.h"

namespace vlm::server {

/// The patient import and its event.
class ASLImportPatientFacade final : public Facade<_ASLImportPatient, IConnectionPointContainer> {
public:
    ASLImportPatientFacade();

    HRESULT STDMETHODCALLTYPE get_Connection(IDispatch** result) override { return GiveConnection(result, component_); }
    HRESULT STDMETHODCALLTYPE putref_Connection(IDispatch* value) override { return TakeConnection(value, component_); }
    HRESULT STDMETHODCALLTYPE get_LockSrv(IDispatch** result) override {
        return GiveObject(result, kLockSrvId, [&] { return HostReference::ObjectOf(component_.LockSrv()); });
    }
    HRESULT STDMETHODCALLTYPE putref_LockSrv(IDispatch* value) override {
        return Do([&] { component_.SetLockSrv(HostReference::Of(value)); });
    }
    HRESULT STDMETHODCALLTYPE putref_Rights(IDispatch* value) override {
        return Do([&] { component_.SetRights(HostReference::Of(value)); });
    }
    HRESULT STDMETHODCALLTYPE get_Rights(IDispatch** result) override {
        return GiveObject(result, kRightsId, [&] { return HostReference::ObjectOf(component_.Rights()); });
    }
    HRESULT STDMETHODCALLTYPE ShowDialog() override {
        return Do([&] { component_.ShowDialog(); });
    }
    HRESULT STDMETHODCALLTYPE InitDataStructure(IDispatch* data) override;
    HRESULT STDMETHODCALLTYPE GetElementList(BSTR fileName, IDispatch** result) override;
    HRESULT STDMETHODCALLTYPE CreatePatient(IDispatch* data, LONG* result) override;
    HRESULT STDMETHODCALLTYPE GetElementListSistemaTS(LONG specialist, BSTR pin, IDispatch** result) override;
    HRESULT STDMETHODCALLTYPE GetElementListEsentiRedditoSistemaTS(LONG specialist, BSTR pin,
                                                                   IDispatch** result) override;
    HRESULT STDMETHODCALLTYPE CreateEsenzione(IDispatch* data, LONG* result) override;

    HRESULT STDMETHODCALLTYPE EnumConnectionPoints(IEnumConnectionPoints** points) override {
        return events_.Points(points);
    }
    HRESULT STDMETHODCALLTYPE FindConnectionPoint(REFIID iid, IConnectionPoint** point) override {
        return events_.Find(iid, point);
    }

private:
    GUID Events() const noexcept override { return k__ASLImportPatientId; }

    ASLImportPatient component_{Lib()};
    com::EventSource events_{*this, k__ASLImportPatientId};
};

}  // namespace vlm::server
