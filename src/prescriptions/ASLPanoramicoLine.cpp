#include "prescriptions/ASLPanoramicoLine.h"

#include "PrescriptionLayout.h"
#include "record/Columns.h"
#include "values/Error.h"
#include "values/Number.h"

namespace vlm {

namespace {

/// The kind of request of a drug that another doctor suggested.
constexpr double kSuggerita = 3;
constexpr std::size_t kDiagnosisLength = 5;

/// Automation's numbers for "Invalid use of Null" and "Object variable not set".
constexpr std::int32_t kNullNumber = 94;
constexpr std::int32_t kNotSetNumber = 91;

/// A column whose cell must hold a value.
constexpr auto kRequired = [](auto& member, const data::Recordset& rows, int at) {
    if (rows.IsNull(at)) {
        throw Error("Uso di Null non valido: colonna " + std::string(rows.FieldName(at)) + ".", kNullNumber);
    }
    using Member = std::remove_cvref_t<decltype(member)>;
    if constexpr (std::is_same_v<Member, Date>) {
        member = *rows.DateOf(at);
    } else if constexpr (std::is_same_v<Member, std::int16_t>) {
        member = text::ToInt16(static_cast<double>(rows.IntegerOf(at)), rows.FieldName(at));
    } else {
        member = rows.TextOf(at);
    }
};
constexpr auto kSuggestion = [](std::string& member, const data::Recordset& rows, int at) {
    member = rows.NumberOf(at) == kSuggerita ? "S" : " ";
};

}  // namespace

/// In the order in which they are read; an illness is looked up as soon as it is known.
struct ASLPanoramicoLine::Columns {
    template <auto kMember>
    static void LookUp(ASLPanoramicoLine& record, const data::Recordset& rows, int at) {
        record.*kMember = record.LookupICD9(rows.Int32Of(at));
    }
    using R = ASLPanoramicoLine;
    static constexpr std::tuple kAll{
        Column{"CodiceRegionale", &R::CodMed, kRequired},
        Column{"PAZ_CodiceFiscale", &R::AssCF, kRequired},
        Column{"DataRicetta", &R::DataRicetta, kRequired},
        Column{"CodiceAIC_1", &R::CodFarmaco1},
        Column{"IDPatologia_1", &R::ICD9Farmaco1, LookUp<&R::ICD9Farmaco1>},
        Column{"IDTipoRichiesta", &R::SuggFarmaco1, kSuggestion},
        Column{"Quantita_1", &R::QFarmaco1, kRequired},
        Column{"CodiceAIC_2", &R::CodFarmaco2},
        Column{"IDPatologia_2", &R::ICD9Farmaco2, LookUp<&R::ICD9Farmaco2>},
        Column{"Quantita_2", &R::QFarmaco2, kRequired},
        Column{"PrescrivibileSSN", &R::PrescrivibileSSN},
    };
};

bool ASLPanoramicoLine::ReadData() {
    ClearFields();
    if (rs_ == nullptr) throw Error("Insieme di righe Rs non impostato.", kNotSetNumber);
    // By name for every row: one row set object may go through several sets of columns.
    FindAndRead<Columns::kAll>(*this, *rs_);
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
