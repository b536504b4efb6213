#include "prescriptions/ASLPanoramicoLine.h"

#include "PrescriptionLayout.h"
#include "record/FieldFormat.h"
#include "values/DateText.h"
#include "values/Error.h"
#include "values/Number.h"

namespace vlm {

namespace {

constexpr FieldFormat kFormat{kCommonFields};

/// The kind of request of a drug that another doctor suggested.
constexpr double kSuggerita = 3;
constexpr std::size_t kDiagnosisLength = 5;

/// Automation's numbers for "Invalid use of Null" and "Object variable not set".
constexpr long kNullNumber = 94;
constexpr long kNotSetNumber = 91;

/// The ordinal of a column whose current cell holds a value.
int Required(const data::Recordset& rs, std::string_view column) {
    const int ordinal = rs.Ordinal(column);
    if (rs.IsNull(ordinal)) throw Error("Uso di Null non valido: colonna " + std::string(column) + ".", kNullNumber);
    return ordinal;
}

std::int16_t Quantity(const data::Recordset& rs, std::string_view column) {
    return text::ToInt16(static_cast<double>(rs.IntegerOf(Required(rs, column))), column);
}

std::string Text(const data::Recordset& rs, std::string_view column) {
    return std::string(rs.TextOf(rs.Ordinal(column)));
}

void Put(FixedLine& line, const FieldPlace& place, std::string_view value) {
    kFormat.Place(line, place, text::Left(value, static_cast<std::size_t>(place.length)));
}

void Put(FixedLine& line, const FieldPlace& place, std::int16_t value) {
    kFormat.Place(line, place, std::int64_t{value});
}

void Put(FixedLine& line, const FieldPlace& place, Date value) { kFormat.Place(line, place, text::DdMmYyyy(value)); }

}  // namespace

bool ASLPanoramicoLine::ReadData() {
    ClearFields();
    if (rs_ == nullptr) throw Error("Insieme di righe Rs non impostato.", kNotSetNumber);
    // By name for every row: one row set object may go through several sets of columns.
    const data::Recordset& rs = *rs_;
    CodMed = rs.TextOf(Required(rs, "CodiceRegionale"));
    AssCF = rs.TextOf(Required(rs, "PAZ_CodiceFiscale"));
    DataRicetta = *rs.DateOf(Required(rs, "DataRicetta"));
    ReadDrugs();
    TipoRecord = "F";
    if (!ICD9Farmaco1.empty() && !ICD9Farmaco2.empty() && ICD9Farmaco1 != ICD9Farmaco2) {
        ICD92Farmaco1 = ICD9Farmaco2;
        ICD92Farmaco2 = ICD9Farmaco1;
    }
    PrescrivibileSSN = rs.NumberOf(rs.Ordinal("PrescrivibileSSN")) != 0;
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

void ASLPanoramicoLine::ReadDrugs() {
    const data::Recordset& rs = *rs_;
    CodFarmaco1 = Text(rs, "CodiceAIC_1");
    ICD9Farmaco1 = LookupICD9(rs.Int32Of(rs.Ordinal("IDPatologia_1")));
    SuggFarmaco1 = rs.NumberOf(rs.Ordinal("IDTipoRichiesta")) == kSuggerita ? "S" : " ";
    QFarmaco1 = Quantity(rs, "Quantita_1");
    CodFarmaco2 = Text(rs, "CodiceAIC_2");
    ICD9Farmaco2 = LookupICD9(rs.Int32Of(rs.Ordinal("IDPatologia_2")));
    SuggFarmaco2 = SuggFarmaco1;
    QFarmaco2 = Quantity(rs, "Quantita_2");
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
    if (!PrescrivibileSSN) return line_;
    WriteFields(line_, prescriptions::kLayout, prescriptions::kLineLength, false,
                [this](FixedLine& line, const FieldPlace& place, const prescriptions::Field& field) {
                    std::visit([&](auto member) { Put(line, place, this->*member); }, field);
                });
    return line_;
}

}  // namespace vlm
