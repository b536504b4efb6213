#pragma once

#include "prescriptions/ASLPanoramicoLine.h"
#include "record/Columns.h"
#include "record/Layout.h"
#include "values/Error.h"

/// The drug prescription: the columns that it is read from and the line that it writes.
namespace vlm::prescriptions {

/// Automation's number for "Invalid use of Null".
inline constexpr std::int32_t kNullNumber = 94;
/// The kind of request of a drug that another doctor suggested.
inline constexpr double kSuggerita = 3;

/// A column whose cell must hold a value.
inline constexpr auto kRequired = [](auto& member, const data::Recordset& rows, int at) {
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
inline constexpr auto kSuggestion = [](std::string& member, const data::Recordset& rows, int at) {
    member = rows.NumberOf(at) == kSuggerita ? "S" : " ";
};
/// An illness is looked up as soon as it is known.
template <auto kMember>
void LookUp(ASLPanoramicoLine& record, const data::Recordset& rows, int at) {
    record.*kMember = record.LookupICD9(rows.Int32Of(at));
}

/// In the order in which they are found and read.
inline constexpr std::tuple kColumns{
    Column{"CodiceRegionale", &ASLPanoramicoLine::CodMed, kRequired},
    Column{"PAZ_CodiceFiscale", &ASLPanoramicoLine::AssCF, kRequired},
    Column{"DataRicetta", &ASLPanoramicoLine::DataRicetta, kRequired},
    Column{"CodiceAIC_1", &ASLPanoramicoLine::CodFarmaco1},
    Column{"IDPatologia_1", &ASLPanoramicoLine::ICD9Farmaco1, LookUp<&ASLPanoramicoLine::ICD9Farmaco1>},
    Column{"IDTipoRichiesta", &ASLPanoramicoLine::SuggFarmaco1, kSuggestion},
    Column{"Quantita_1", &ASLPanoramicoLine::QFarmaco1, kRequired},
    Column{"CodiceAIC_2", &ASLPanoramicoLine::CodFarmaco2},
    Column{"IDPatologia_2", &ASLPanoramicoLine::ICD9Farmaco2, LookUp<&ASLPanoramicoLine::ICD9Farmaco2>},
    Column{"Quantita_2", &ASLPanoramicoLine::QFarmaco2, kRequired},
    Column{"PrescrivibileSSN", &ASLPanoramicoLine::PrescrivibileSSN},
};

/// The doctor's code is a text under a number's rule: of a longer one the first characters count.
inline constexpr Derived kCodMed{&ASLPanoramicoLine::CodMed,
                                 [](const ASLPanoramicoLine& record) { return text::Left(record.CodMed, 5); }};

inline constexpr Layout kLayout(76, kCommonFields,  //
                                Field(1, 5, FieldRule::Number, "CodMed", kCodMed, "i primi 5 caratteri"),
                                Field(6, 16, FieldRule::Text, "AssCF", &ASLPanoramicoLine::AssCF),
                                Field(22, 8, FieldRule::Date, "DataRicetta", &ASLPanoramicoLine::DataRicetta),
                                Field(30, 10, FieldRule::Text, "CodFarmaco1", &ASLPanoramicoLine::CodFarmaco1),
                                Field(40, 5, FieldRule::Text, "ICD9Farmaco1", &ASLPanoramicoLine::ICD9Farmaco1),
                                Field(45, 1, FieldRule::Text, "SuggFarmaco1", &ASLPanoramicoLine::SuggFarmaco1,
                                      "S o spazio"),
                                Field(46, 2, FieldRule::Number, "QFarmaco1", &ASLPanoramicoLine::QFarmaco1),
                                Field(48, 10, FieldRule::Text, "CodFarmaco2", &ASLPanoramicoLine::CodFarmaco2),
                                Field(58, 5, FieldRule::Text, "ICD9Farmaco2", &ASLPanoramicoLine::ICD9Farmaco2),
                                Field(63, 1, FieldRule::Text, "SuggFarmaco2", &ASLPanoramicoLine::SuggFarmaco2,
                                      "come SuggFarmaco1"),
                                Field(64, 2, FieldRule::Number, "QFarmaco2", &ASLPanoramicoLine::QFarmaco2),
                                Field(66, 1, FieldRule::Text, "TipoRecord", &ASLPanoramicoLine::TipoRecord, "sempre F"),
                                Field(67, 5, FieldRule::Text, "ICD92Farmaco1", &ASLPanoramicoLine::ICD92Farmaco1,
                                      "ICD9Farmaco2, se le due diagnosi ci sono e differiscono"),
                                Field(72, 5, FieldRule::Text, "ICD92Farmaco2", &ASLPanoramicoLine::ICD92Farmaco2,
                                      "ICD9Farmaco1, se le due diagnosi ci sono e differiscono"));

}  // namespace vlm::prescriptions
