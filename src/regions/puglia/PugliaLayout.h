#pragma once

#include <array>
#include <variant>

#include "Ricetta.h"
#include "record/Layout.h"

/// The line of the Puglia service file, as the region lays it out: one for each prescription.
namespace vlm::puglia {

inline constexpr int kLineLength = 341;
inline constexpr int kLineEndLength = 2;

/// What stands in a service's slot, and in the line. Where nothing of the prescription stands the region wants spaces,
/// or zeros.
using SlotField = std::variant<std::string Prestazione::*, std::int32_t Prestazione::*>;
using Slots = std::array<Prestazione, kMostPrestazioni>;
using Field = std::variant<std::monostate, std::string Ricetta::*, std::int32_t Ricetta::*, Currency Ricetta::*,
                           Slots Ricetta::*>;

using SlotRow = LayoutField<SlotField>;
using Row = LayoutField<Field>;

inline constexpr int kSlotLength = 7;

inline constexpr std::array kSlotLayout = {
    SlotRow{1, 5, FieldRule::RightText, &Prestazione::Codice},  // without points
    SlotRow{6, 2, FieldRule::Number, &Prestazione::Quantita},
};
static_assert(IsLayoutOf(kSlotLayout, kSlotLength));

inline constexpr std::array kLayout = {
    Row{1, 6, FieldRule::Number, &Ricetta::CodiceRegionale},
    Row{7, 6, FieldRule::Number, &Ricetta::MedicoPrescrittore},
    Row{13, 30, FieldRule::Text, &Ricetta::Cognome},
    Row{43, 30, FieldRule::Text, &Ricetta::Nome},
    Row{73, 16, FieldRule::Text, &Ricetta::CodiceAssistito},
    Row{89, 16, FieldRule::Text, &Ricetta::CodiceFiscale},
    Row{105, 1, FieldRule::Text, &Ricetta::Sesso},
    Row{106, 8, FieldRule::Date, &Ricetta::DataNascita},
    Row{114, 6, FieldRule::Number, &Ricetta::ComuneISTAT},
    Row{120, 3, FieldRule::Number, &Ricetta::CodiceRegione},
    Row{123, 3, FieldRule::Number, &Ricetta::ASLResidenza},
    Row{126, 16, FieldRule::Number, &Ricetta::Identificativo},
    Row{142, 8, FieldRule::Date, &Ricetta::DataPrescrizione},
    Row{150, 8, FieldRule::Date, &Ricetta::DataSpedizione},
    Row{158, 5, FieldRule::Number, &Ricetta::ProgressivoRicettaExport},
    Row{163, 2, FieldRule::Number, Field{}},
    Row{165, 3, FieldRule::Number, &Ricetta::BrancaSpecialistica},
    Row{168, kSlotLength* static_cast<int>(kMostPrestazioni), FieldRule::Text, &Ricetta::Prestazioni},
    Row{224, 5, FieldRule::Blank, Field{}},
    Row{229, 2, FieldRule::Number, Field{}},
    Row{231, 11, FieldRule::Amount, &Ricetta::TotalePrestazioni},
    Row{242, 11, FieldRule::Amount, &Ricetta::TotaleTicket},
    Row{253, 1, FieldRule::Text, &Ricetta::Valuta},
    Row{254, 3, FieldRule::Blank, Field{}},
    Row{257, 6, FieldRule::Text, &Ricetta::Esenzione},
    Row{263, 14, FieldRule::Blank, Field{}},
    Row{277, 1, FieldRule::Text, &Ricetta::ClassePriorita},
    Row{278, 2, FieldRule::Number, &Ricetta::TipoAccesso},
    Row{280, 8, FieldRule::Date, &Ricetta::DataContatto},
    Row{288, 8, FieldRule::Date, &Ricetta::DataPrimaDisponibilita},
    Row{296, 8, FieldRule::Date, &Ricetta::DataAssegnata},
    Row{304, 8, FieldRule::Date, &Ricetta::DataRefertazione},
    Row{312, 8, FieldRule::Date, &Ricetta::DataInizioCiclo},
    Row{320, 1, FieldRule::Text, &Ricetta::Garantita},
    Row{321, 1, FieldRule::Text, &Ricetta::Suggerita},
    Row{322, 20, FieldRule::Blank, Field{}},
};
static_assert(IsLayoutOf(kLayout, kLineLength));

/// Does not compile for a field that is not in the layout.
template <class FieldType, std::size_t N>
consteval LayoutField<FieldType> RowOf(const FieldType& field, const std::array<LayoutField<FieldType>, N>& layout) {
    for (const LayoutField<FieldType>& row : layout) {
        if (row.field == field) return row;
    }
    throw "not in the layout";
}

/// Where a part of a slot, from 0, stands in the line.
constexpr FieldPlace PlaceInSlot(std::size_t slot, const FieldPlace& part) {
    constexpr int kStart = RowOf(Field{&Ricetta::Prestazioni}, kLayout).position;
    return {kStart + kSlotLength * static_cast<int>(slot) + part.position - 1, part.length, part.rule};
}

}  // namespace vlm::puglia
