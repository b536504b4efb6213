#pragma once

#include <algorithm>
#include <array>

#include "PugliaLayout.h"

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

consteval Shown ShownBy(const Row& row) {
    if (row.rule == FieldRule::Date) return Shown::Date;
    if (row.rule == FieldRule::Amount) return Shown::Amount;
    return std::holds_alternative<std::int32_t Ricetta::*>(row.field) ? Shown::Number : Shown::Text;
}

consteval PreviewColumn Column(const char* title, int width, Field field, Shown shown) {
    return {title, 0, width, RowOf(field, kLayout), shown};
}

consteval PreviewColumn Column(const char* title, int width, Field field) {
    return Column(title, width, field, ShownBy(RowOf(field, kLayout)));
}

consteval PreviewColumn SlotColumn(const char* title, int slot, int width, SlotField field, Shown shown) {
    return {title, slot, width, PlaceInSlot(static_cast<std::size_t>(slot) - 1, RowOf(field, kSlotLayout)), shown};
}

inline constexpr std::array kColumnsBeforeSlots = {
    Column("Progr.", 50, &Ricetta::ProgressivoRicettaExport),
    Column("Cognome", 100, &Ricetta::Cognome),
    Column("Nome", 100, &Ricetta::Nome),
    Column("Valuta", 43, &Ricetta::Valuta),
    Column("Tot. prestaz.", 80, &Ricetta::TotalePrestazioni),
    Column("Tot. Ticket", 80, &Ricetta::TotaleTicket),
    Column("Cod. assistito", 100, &Ricetta::CodiceAssistito),
    Column("Cod. Fisc. assistito", 110, &Ricetta::CodiceFiscale),
    Column("Num. ricetta", 110, &Ricetta::Identificativo),
    Column("Data rilascio ricetta", 115, &Ricetta::DataPrescrizione),
    Column("Data spediz. ricetta", 110, &Ricetta::DataSpedizione),
    Column("Cod. reg. erogatore", 120, &Ricetta::CodiceRegionale),
    Column("Sesso", 45, &Ricetta::Sesso, Shown::Sesso),
    Column("Data nascita", 77, &Ricetta::DataNascita),
    Column("Cod. comune res.", 100, &Ricetta::ComuneISTAT),
    Column("Cod. regione", 75, &Ricetta::CodiceRegione),
    Column("Cod. USL res", 75, &Ricetta::ASLResidenza),
    Column("Cod. branca", 75, &Ricetta::BrancaSpecialistica),
    Column("Cod. reg. erogatore", 110, &Ricetta::CodiceRegionale),
    Column("Cod. reg. prescrittore", 115, &Ricetta::MedicoPrescrittore),
};

inline constexpr std::array kColumnsAfterSlots = {
    Column("Codice esenzione", 65, &Ricetta::Esenzione),
    Column("Classe priorità", 83, &Ricetta::ClassePriorita, Shown::Priorita),
    Column("Tipo accesso", 86, &Ricetta::TipoAccesso),
    Column("Data contatto", 95, &Ricetta::DataContatto),
    Column("Data prima disp.", 95, &Ricetta::DataPrimaDisponibilita),
    Column("Data assegnata", 95, &Ricetta::DataAssegnata),
    Column("Data refert.", 95, &Ricetta::DataRefertazione),
    Column("Data inizio ciclo", 95, &Ricetta::DataInizioCiclo),
    Column("Garantita", 64, &Ricetta::Garantita),
    Column("Suggerita", 64, &Ricetta::Suggerita),
};

consteval auto AllPreviewColumns() {
    std::array<PreviewColumn, kColumnsBeforeSlots.size() + 2 * kMostPrestazioni + kColumnsAfterSlots.size()> all{};
    auto next = std::copy(kColumnsBeforeSlots.begin(), kColumnsBeforeSlots.end(), all.begin());
    for (int slot = 1; slot <= static_cast<int>(kMostPrestazioni); ++slot) {
        *next++ = SlotColumn("Cod. prest. ", slot, 85, &Prestazione::Codice, Shown::Text);
        *next++ = SlotColumn("Quant. ", slot, 60, &Prestazione::Quantita, Shown::Number);
    }
    std::copy(kColumnsAfterSlots.begin(), kColumnsAfterSlots.end(), next);
    return all;
}

inline constexpr auto kPreviewColumns = AllPreviewColumns();

}  // namespace vlm::puglia
