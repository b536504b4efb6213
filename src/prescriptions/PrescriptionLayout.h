#pragma once

#include <array>
#include <variant>

#include "prescriptions/ASLPanoramicoLine.h"
#include "record/Layout.h"

/// The line of the drug-prescription file.
namespace vlm::prescriptions {

inline constexpr int kLineLength = 76;

/// A field of the record. Of a text under a number rule (the doctor's code) the first characters count.
using Field =
    std::variant<std::string ASLPanoramicoLine::*, std::int16_t ASLPanoramicoLine::*, Date ASLPanoramicoLine::*>;
using Row = LayoutField<Field>;

inline constexpr std::array kLayout = {
    Row{1, 5, FieldRule::Number, &ASLPanoramicoLine::CodMed},
    Row{6, 16, FieldRule::Text, &ASLPanoramicoLine::AssCF},
    Row{22, 8, FieldRule::Date, &ASLPanoramicoLine::DataRicetta},
    Row{30, 10, FieldRule::Text, &ASLPanoramicoLine::CodFarmaco1},
    Row{40, 5, FieldRule::Text, &ASLPanoramicoLine::ICD9Farmaco1},
    Row{45, 1, FieldRule::Text, &ASLPanoramicoLine::SuggFarmaco1},
    Row{46, 2, FieldRule::Number, &ASLPanoramicoLine::QFarmaco1},
    Row{48, 10, FieldRule::Text, &ASLPanoramicoLine::CodFarmaco2},
    Row{58, 5, FieldRule::Text, &ASLPanoramicoLine::ICD9Farmaco2},
    Row{63, 1, FieldRule::Text, &ASLPanoramicoLine::SuggFarmaco2},
    Row{64, 2, FieldRule::Number, &ASLPanoramicoLine::QFarmaco2},
    Row{66, 1, FieldRule::Text, &ASLPanoramicoLine::TipoRecord},
    Row{67, 5, FieldRule::Text, &ASLPanoramicoLine::ICD92Farmaco1},
    Row{72, 5, FieldRule::Text, &ASLPanoramicoLine::ICD92Farmaco2},
};
static_assert(IsLayoutOf(kLayout, kLineLength));

}  // namespace vlm::prescriptions
