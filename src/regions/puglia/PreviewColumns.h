#pragma once

#include <algorithm>
#include <array>

#include "PugliaRecord.h"

/// The columns of the grid that shows a Puglia file, in the order in which they stand there. Where a column finds its
/// field in a line, and how it shows it, comes from the line's layout.
namespace vlm::puglia {

enum class Shown {
    Text,
    Number,    // without zeros in front
    Amount,    // 1.234,50
    Date,      // dd/mm/yyyy, nothing for zeros
    Sesso,     // M or F
    Priorita,  // the class in words
};

struct PreviewColumn {
    const char* title;
    int slot;   // 1 to 8, and then part of the title; 0 for a column of the whole prescription
    int width;  // in the grid's units
    FieldPlace place;
    Shown shown;
};

template <class Member>
consteval Shown ShownBy(FieldRule rule, Member Ricetta::*) {
    if (rule == FieldRule::Date) return Shown::Date;
    if (rule == FieldRule::Amount) return Shown::Amount;
    return std::is_integral_v<Member> ? Shown::Number : Shown::Text;
}

template <auto kMember>
consteval PreviewColumn Column(const char* title, int width, Shown shown) {
    return {title, 0, width, PlaceOf<kLayout, kMember>(), shown};
}
template <auto kMember>
consteval PreviewColumn Column(const char* title, int width) {
    return Column<kMember>(title, width, ShownBy(PlaceOf<kLayout, kMember>().rule, kMember));
}

inline constexpr std::array kColumnsBeforeSlots = {
    Column<&Ricetta::ProgressivoRicettaExport>("Progr.", 50),
    Column<&Ricetta::Cognome>("Cognome", 100),
    Column<&Ricetta::Nome>("Nome", 100),
    Column<&Ricetta::Valuta>("Valuta", 43),
    Column<&Ricetta::TotalePrestazioni>("Tot. prestaz.", 80),
    Column<&Ricetta::TotaleTicket>("Tot. Ticket", 80),
    Column<&Ricetta::CodiceAssistito>("Cod. assistito", 100),
    Column<&Ricetta::CodiceFiscale>("Cod. Fisc. assistito", 110),
    Column<&Ricetta::NumeroRicetta>("Num. ricetta", 110),
    Column<&Ricetta::DataRilascio>("Data rilascio ricetta", 115),
    Column<&Ricetta::DataSpedizione>("Data spediz. ricetta", 110),
    Column<&Ricetta::CodiceRegionale>("Cod. reg. erogatore", 120),
    Column<&Ricetta::Sesso>("Sesso", 45, Shown::Sesso),
    Column<&Ricetta::DataNascita>("Data nascita", 77),
    Column<&Ricetta::ComuneISTAT>("Cod. comune res.", 100),
    Column<&Ricetta::CodiceRegione>("Cod. regione", 75),
    Column<&Ricetta::ASLResidenza>("Cod. USL res", 75),
    Column<&Ricetta::BrancaSpecialistica>("Cod. branca", 75),
    Column<&Ricetta::CodiceRegionale>("Cod. reg. erogatore", 110),
    Column<&Ricetta::MedicoPrescrittore>("Cod. reg. prescrittore", 115),
};

inline constexpr std::array kColumnsAfterSlots = {
    Column<&Ricetta::Esenzione>("Codice esenzione", 65),
    Column<&Ricetta::ClassePriorita>("Classe priorità", 83, Shown::Priorita),
    Column<&Ricetta::TipoAccesso>("Tipo accesso", 86),
    Column<&Ricetta::DataContatto>("Data contatto", 95),
    Column<&Ricetta::DataPrimaDisponibilita>("Data prima disp.", 95),
    Column<&Ricetta::DataAssegnata>("Data assegnata", 95),
    Column<&Ricetta::DataRefertazione>("Data refert.", 95),
    Column<&Ricetta::DataInizioCiclo>("Data inizio ciclo", 95),
    Column<&Ricetta::Garantita>("Garantita", 64),
    Column<&Ricetta::Suggerita>("Suggerita", 64),
};

consteval auto AllPreviewColumns() {
    std::array<PreviewColumn, kColumnsBeforeSlots.size() + 2 * kMostPrestazioni + kColumnsAfterSlots.size()> all{};
    auto next = std::copy(kColumnsBeforeSlots.begin(), kColumnsBeforeSlots.end(), all.begin());
    for (int slot = 0; slot < static_cast<int>(kMostPrestazioni); ++slot) {
        *next++ = {"Cod. prest. ", slot + 1, 85, CodiceOfSlot(slot), Shown::Text};
        *next++ = {"Quant. ", slot + 1, 60, QuantitaOfSlot(slot), Shown::Number};
    }
    std::copy(kColumnsAfterSlots.begin(), kColumnsAfterSlots.end(), next);
    return all;
}

inline constexpr auto kPreviewColumns = AllPreviewColumns();

}  // namespace vlm::puglia
