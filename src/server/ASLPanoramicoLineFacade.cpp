#include "ASLPanoramicoLineFacade.h"

#include "values/ColumnConversion.h"

namespace vlm::server {

HRESULT ASLPanoramicoLineFacade::get_DataRicetta(DATE* result) {
    return Give(result, [&] { return record_.DataRicetta.Serial(); });
}

HRESULT ASLPanoramicoLineFacade::put_DataRicetta(DATE value) {
    return Do([&] { record_.DataRicetta = data::ColumnDate(value, "DataRicetta"); });
}

HRESULT ASLPanoramicoLineFacade::get_Rs(IDispatch** result) {
    return GiveObject(result, data::ado::kRecordsetId, [&] { return com::Ref<IDispatch>(rs_.Object()).Detach(); });
}

HRESULT ASLPanoramicoLineFacade::putref_Rs(IDispatch* value) {
    return Do([&] {
        data::ado::RecordsetReference rows(value);
        if (value != nullptr && rows.Object() == nullptr) {
            throw Error("Rs: l'oggetto non è un insieme di righe.", DISP_E_TYPEMISMATCH);
        }
        rs_ = std::move(rows);
    });
}

HRESULT ASLPanoramicoLineFacade::ReadData(VARIANT_BOOL* result) {
    return GiveTruth(result, [&] {
        record_.SetRs(rs_.Rows());
        return record_.ReadData();
    });
}

HRESULT ASLPanoramicoLineFacade::GetFormattedLine(BSTR* result) {
    return Give(result, [&] { return com::Bstr(record_.GetFormattedLine()).Detach(); });
}

HRESULT ASLPanoramicoLineFacade::get_PrescrivibileSSN(VARIANT_BOOL* result) {
    return GiveTruth(result, [&] { return record_.PrescrivibileSSN; });
}

HRESULT ASLPanoramicoLineFacade::put_PrescrivibileSSN(VARIANT_BOOL value) {
    record_.PrescrivibileSSN = value != VARIANT_FALSE;
    return S_OK;
}

}  // namespace vlm::server
