#pragma once

#include "Facade.h"
#include "ado/HostRecordset.h"
#include "prescriptions/ASLPanoramicoLine.h"

namespace vlm::server {

class ASLPanoramicoLineFacade final : public Facade<_ASLPanoramicoLine> {
public:
    ASLPanoramicoLineFacade() : Facade(kASLPanoramicoLineClass) {}

    HRESULT STDMETHODCALLTYPE get_CodMed(BSTR* result) override { return GiveText(result, record_.CodMed); }
    HRESULT STDMETHODCALLTYPE put_CodMed(BSTR value) override { return TakeText(value, record_.CodMed); }
    HRESULT STDMETHODCALLTYPE get_AssCF(BSTR* result) override { return GiveText(result, record_.AssCF); }
    HRESULT STDMETHODCALLTYPE put_AssCF(BSTR value) override { return TakeText(value, record_.AssCF); }
    HRESULT STDMETHODCALLTYPE get_DataRicetta(DATE* result) override;
    HRESULT STDMETHODCALLTYPE put_DataRicetta(DATE value) override;
    HRESULT STDMETHODCALLTYPE get_CodFarmaco1(BSTR* result) override { return GiveText(result, record_.CodFarmaco1); }
    HRESULT STDMETHODCALLTYPE put_CodFarmaco1(BSTR value) override { return TakeText(value, record_.CodFarmaco1); }
    HRESULT STDMETHODCALLTYPE get_ICD9Farmaco1(BSTR* result) override { return GiveText(result, record_.ICD9Farmaco1); }
    HRESULT STDMETHODCALLTYPE put_ICD9Farmaco1(BSTR value) override { return TakeText(value, record_.ICD9Farmaco1); }
    HRESULT STDMETHODCALLTYPE get_SuggFarmaco1(BSTR* result) override { return GiveText(result, record_.SuggFarmaco1); }
    HRESULT STDMETHODCALLTYPE put_SuggFarmaco1(BSTR value) override { return TakeText(value, record_.SuggFarmaco1); }
    HRESULT STDMETHODCALLTYPE get_QFarmaco1(SHORT* result) override { return GiveNumber(result, record_.QFarmaco1); }
    HRESULT STDMETHODCALLTYPE put_QFarmaco1(SHORT value) override { return TakeNumber(value, record_.QFarmaco1); }
    HRESULT STDMETHODCALLTYPE get_CodFarmaco2(BSTR* result) override { return GiveText(result, record_.CodFarmaco2); }
    HRESULT STDMETHODCALLTYPE put_CodFarmaco2(BSTR value) override { return TakeText(value, record_.CodFarmaco2); }
    HRESULT STDMETHODCALLTYPE get_ICD9Farmaco2(BSTR* result) override { return GiveText(result, record_.ICD9Farmaco2); }
    HRESULT STDMETHODCALLTYPE put_ICD9Farmaco2(BSTR value) override { return TakeText(value, record_.ICD9Farmaco2); }
    HRESULT STDMETHODCALLTYPE get_SuggFarmaco2(BSTR* result) override { return GiveText(result, record_.SuggFarmaco2); }
    HRESULT STDMETHODCALLTYPE put_SuggFarmaco2(BSTR value) override { return TakeText(value, record_.SuggFarmaco2); }
    HRESULT STDMETHODCALLTYPE get_QFarmaco2(SHORT* result) override { return GiveNumber(result, record_.QFarmaco2); }
    HRESULT STDMETHODCALLTYPE put_QFarmaco2(SHORT value) override { return TakeNumber(value, record_.QFarmaco2); }
    HRESULT STDMETHODCALLTYPE get_TipoRecord(BSTR* result) override { return GiveText(result, record_.TipoRecord); }
    HRESULT STDMETHODCALLTYPE put_TipoRecord(BSTR value) override { return TakeText(value, record_.TipoRecord); }
    HRESULT STDMETHODCALLTYPE get_ICD92Farmaco1(BSTR* result) override {
        return GiveText(result, record_.ICD92Farmaco1);
    }
    HRESULT STDMETHODCALLTYPE put_ICD92Farmaco1(BSTR value) override { return TakeText(value, record_.ICD92Farmaco1); }
    HRESULT STDMETHODCALLTYPE get_ICD92Farmaco2(BSTR* result) override {
        return GiveText(result, record_.ICD92Farmaco2);
    }
    HRESULT STDMETHODCALLTYPE put_ICD92Farmaco2(BSTR value) override { return TakeText(value, record_.ICD92Farmaco2); }
    HRESULT STDMETHODCALLTYPE get_Rs(IDispatch** result) override;
    HRESULT STDMETHODCALLTYPE putref_Rs(IDispatch* value) override;
    HRESULT STDMETHODCALLTYPE get_Connection(IDispatch** result) override { return GiveConnection(result, record_); }
    HRESULT STDMETHODCALLTYPE putref_Connection(IDispatch* value) override { return TakeConnection(value, record_); }
    HRESULT STDMETHODCALLTYPE ReadData(VARIANT_BOOL* result) override;
    HRESULT STDMETHODCALLTYPE GetFormattedLine(BSTR* result) override;
    HRESULT STDMETHODCALLTYPE GetErrors(BSTR* result) override { return GiveText(result, record_.GetErrors()); }
    HRESULT STDMETHODCALLTYPE get_PrescrivibileSSN(VARIANT_BOOL* result) override;
    HRESULT STDMETHODCALLTYPE put_PrescrivibileSSN(VARIANT_BOOL value) override;

private:
    static HRESULT TakeText(BSTR value, std::string& field) noexcept {
        return Do([&] { field = com::ToUtf8(value); });
    }
    static HRESULT GiveNumber(SHORT* result, std::int16_t field) noexcept {
        return Give(result, [&] { return field; });
    }
    static HRESULT TakeNumber(SHORT value, std::int16_t& field) noexcept {
        field = value;
        return S_OK;
    }

    ASLPanoramicoLine record_;
    data::ado::RecordsetReference rs_;
};

}  // namespace vlm::server
