#include "prescriptions/ASLPanoramicoLine.h"

#include "PrescriptionRecord.h"
#include "values/Number.h"

namespace vlm {

namespace {

constexpr std::size_t kDiagnosisLength = 5;
/// Automation's number for "Object variable not set".
constexpr std::int32_t kNotSetNumber = 91;

}  // namespace

bool ASLPanoramicoLine::ReadData() {
    ClearFields();
    if (rs_ == nullptr) throw Error("Insieme di righe Rs non impostato.", kNotSetNumber);
    // By name for every row: one row set object may go through several sets of columns.
    FindAndRead<prescriptions::kColumns>(*this, *rs_);
    SuggFarmaco2 = SuggFarmaco1;
    TipoRecord = "F";
    if (!ICD9Farmaco1.empty() && !ICD9Farmaco2.empty() && ICD9Farmaco1 != ICD9Farmaco2) {
        ICD92Farmaco1 = ICD9Farmaco2;
        ICD92Farmaco2 = ICD9Farmaco1;
    }
    return false;
}

void ASLPanoramicoLine::ClearFields() {
    for (std::string* field : {&CodMed, &AssCF, &CodFarmaco1, &ICD9Farmaco1, &SuggFarmaco1, &CodFarmaco2, &ICD9Farmaco2,
                               &SuggFarmaco2, &TipoRecord, &ICD92Farmaco1, &ICD92Farmaco2}) {
        field->clear();
    }
    DataRicetta = Date{};
    QFarmaco1 = 0;
    QFarmaco2 = 0;
}

std::string ASLPanoramicoLine::LookupICD9(std::int32_t idPatologia) {
    if (idPatologia <= 0) return {};
    const auto known = icd9Cache_.find(idPatologia);
    if (known != icd9Cache_.end()) return known->second;
    if (!connection_) throw Error("Connessione al database non impostata.", kNotSetNumber);
    const data::RecordsetPtr rows = connection_->Open(
        "SELECT CodificaCompleta FROM Aldra..Patologia WHERE IDPatologia = " + std::to_string(idPatologia));
    if (rows->AtEnd()) return {};
    const std::string code(text::Left(rows->TextOf(rows->Ordinal("CodificaCompleta")), kDiagnosisLength));
    return icd9Cache_.emplace(idPatologia, code).first->second;
}

const std::string& ASLPanoramicoLine::GetFormattedLine() {
    line_.clear();
    if (PrescrivibileSSN) WriteLine<prescriptions::kLayout>(line_, *this);
    return line_;
}

}  // namespace vlm
