#pragma once

#include "prescriptions/ASLPanoramicoLine.h"
#include "record/Layout.h"

/// The line of the drug-prescription file.
namespace vlm::prescriptions {

/// The doctor's code is a text under a number's rule: of a longer one the first characters count.
inline constexpr Derived kCodMed{&ASLPanoramicoLine::CodMed,
                                 [](const ASLPanoramicoLine& record) { return text::Left(record.CodMed, 5); }};

inline constexpr Layout kLayout(76, kCommonFields,  //
                                Field(1, 5, FieldRule::Number, "CodMed", kCodMed, "i primi 5 caratteri"),
                                Field(6, 16, FieldRule::Text, "AssCF", &ASLPanoramicoLine::AssCF),
                                Field(22, 8, FieldRule::Date, "DataRicetta", &ASLPanoramicoLine::DataRicetta),
                                Field(30, 10, FieldRule::Text, "CodFarmaco1", &ASLPanoramicoLine::CodFarmaco1),
                                Field(40, 5, FieldRule::Text, "ICD9Farmaco1", &ASLPanoramicoLine::ICD9Farmaco1),
                                Field(45, 1, FieldRule::Text, "SuggFarmaco1", &ASLPanoramicoLine::SuggFarmaco1),
                                Field(46, 2, FieldRule::Number, "QFarmaco1", &ASLPanoramicoLine::QFarmaco1),
                                Field(48, 10, FieldRule::Text, "CodFarmaco2", &ASLPanoramicoLine::CodFarmaco2),
                                Field(58, 5, FieldRule::Text, "ICD9Farmaco2", &ASLPanoramicoLine::ICD9Farmaco2),
                                Field(63, 1, FieldRule::Text, "SuggFarmaco2", &ASLPanoramicoLine::SuggFarmaco2),
                                Field(64, 2, FieldRule::Number, "QFarmaco2", &ASLPanoramicoLine::QFarmaco2),
                                Field(66, 1, FieldRule::Text, "TipoRecord", &ASLPanoramicoLine::TipoRecord),
                                Field(67, 5, FieldRule::Text, "ICD92Farmaco1", &ASLPanoramicoLine::ICD92Farmaco1),
                                Field(72, 5, FieldRule::Text, "ICD92Farmaco2", &ASLPanoramicoLine::ICD92Farmaco2));

}  // namespace vlm::prescriptions
