#pragma once

#include <algorithm>
#include <array>

#include "record/Layout.h"

/// The record of the Puglia service file and its line, as the region lays it out: one for each prescription.
namespace vlm::puglia {

/// How many services a prescription holds: the region's line has no room for more.
inline constexpr std::size_t kMostPrestazioni = 8;

/// A service of a prescription; an empty slot has no code.
struct Prestazione {
    std::string Codice;
    std::int32_t Quantita = 0;
    bool Ciclica = false;
};

/// Dates are "ddmmyyyy", "" for none.
struct Ricetta {
    std::string CodiceRegionale;  // of the structure
    std::string MedicoPrescrittore;
    std::string Cognome;
    std::string Nome;
    std::string CodiceAssistito;
    std::string CodiceFiscale;
    std::string Sesso;  // "1" male, "2" female, "0" unknown
    std::string DataNascita;
    std::int32_t ComuneISTAT = 0;
    std::int32_t CodiceRegione = 0;
    std::int32_t ASLResidenza = 0;
    std::string NumeroRicetta;  // 16 characters
    std::string DataRilascio;
    std::string DataSpedizione;
    std::int32_t ProgressivoRicettaExport = 0;
    std::int16_t BrancaSpecialistica = 0;
    std::array<Prestazione, kMostPrestazioni> Prestazioni;
    Currency TotalePrestazioni;
    Currency TotaleTicket;
    std::string Valuta = "E";  // euro
    std::string Esenzione;
    std::string ClassePriorita;
    std::int16_t TipoAccesso = 0;
    std::string DataContatto;
    std::string DataPrimaDisponibilita;
    std::string DataAssegnata;
    std::string DataRefertazione;
    std::string DataInizioCiclo;
    std::string Garantita;
    std::string Suggerita;
    std::int16_t ProgressivoRicetta = 0;  // services read for the current document
    std::int16_t Anno = 0;                // of the run
    // The billing document.
    std::int32_t IDParcella = 0;
    std::int32_t NumeroDocumento = 0;
    std::int32_t IDConsenso = 0;
    std::int32_t IDTipoDocumento = 0;
    Date DataDocumento;
    std::string PrefissoNumerazione;
    std::string DataPrenotazione;

    /// A prescription that the structure itself numbers, by the host's types of access.
    bool IsNumbered() const noexcept { return TipoAccesso == 2; }
    /// Booking dates go into the file.
    bool IsBooked() const noexcept { return !IsNumbered() && TipoAccesso != 3; }
};

/// A doctor's code is digits; anything else, and the doctor of a prescription that the structure numbers, is left out.
std::string Medico(const Ricetta& ricetta);
/// The prescription's number, or the one that the structure gives it.
std::string Identificativo(const Ricetta& ricetta);
inline constexpr Derived kMedico{&Ricetta::MedicoPrescrittore, Medico};
inline constexpr Derived kIdentificativo{&Ricetta::NumeroRicetta, Identificativo};
inline constexpr Derived kDataPrescrizione{&Ricetta::DataRilascio, [](const Ricetta& ricetta) -> const std::string& {
                                               return ricetta.IsNumbered() ? ricetta.DataSpedizione
                                                                           : ricetta.DataRilascio;
                                           }};
/// Zeros in a prescription without a booking.
constexpr auto IfBooked(std::string Ricetta::*member) {
    return Derived{member, [member](const Ricetta& ricetta) {
                       return ricetta.IsBooked() ? std::string_view(ricetta.*member) : std::string_view();
                   }};
}

// A service's slot: five characters of the code, without points, and two digits.
inline constexpr int kSlotsPosition = 168;
inline constexpr int kSlotLength = 7;

constexpr FieldPlace CodiceOfSlot(int slot) { return {kSlotsPosition + kSlotLength * slot, 5, FieldRule::RightText}; }
constexpr FieldPlace QuantitaOfSlot(int slot) { return {CodiceOfSlot(slot).position + 5, 2, FieldRule::Number}; }
template <std::size_t kSlot>
constexpr auto Slot() {
    constexpr FieldPlace kCodice = CodiceOfSlot(kSlot);
    constexpr FieldPlace kQuantita = QuantitaOfSlot(kSlot);
    return std::tuple{Field(
                          kCodice.position, kCodice.length, kCodice.rule, "CodicePrestazione",
                          [](const Ricetta& ricetta) { return text::Without(ricetta.Prestazioni[kSlot].Codice, '.'); },
                          "CodicePrestazioneTariffario o, se manca, CodicePrestazione; senza punti"),
                      Field(
                          kQuantita.position, kQuantita.length, kQuantita.rule, "Quantita",
                          [](const Ricetta& ricetta) { return ricetta.Prestazioni[kSlot].Quantita; },
                          "1 se manca; 00 senza prestazione")};
}
constexpr auto AllSlots() {
    return []<std::size_t... kSlot>(std::index_sequence<kSlot...>) { return std::tuple_cat(Slot<kSlot>()...); }
    (std::make_index_sequence<kMostPrestazioni>{});
}

inline constexpr auto kLayout = LayoutOf(
    341, kPugliaFields,
    std::tuple{
        Field(1, 6, FieldRule::Number, "CodiceRegionale", &Ricetta::CodiceRegionale),
        Field(7, 6, FieldRule::Number, "MedicoPrescrittore", kMedico, "zeri se non numerico o con TipoAccesso 2"),
        Field(13, 30, FieldRule::Text, "Cognome", &Ricetta::Cognome),
        Field(43, 30, FieldRule::Text, "Nome", &Ricetta::Nome),
        Field(73, 16, FieldRule::Text, "CodiceAssistito", &Ricetta::CodiceAssistito),
        Field(89, 16, FieldRule::Text, "CodiceFiscale", &Ricetta::CodiceFiscale),
        Field(105, 1, FieldRule::Text, "Sesso", &Ricetta::Sesso, "1 maschio, 2 femmina, 0 ignoto"),
        Field(106, 8, FieldRule::Date, "DataNascita", &Ricetta::DataNascita),
        Field(114, 6, FieldRule::Number, "ComuneISTAT", &Ricetta::ComuneISTAT),
        Field(120, 3, FieldRule::Number, "CodiceRegione", &Ricetta::CodiceRegione),
        Field(123, 3, FieldRule::Number, "ASLResidenza", &Ricetta::ASLResidenza),
        Field(126, 16, FieldRule::Number, "identificativo della ricetta", kIdentificativo,
              "con TipoAccesso 2: 46, CodiceRegionale, ultima cifra dell'anno, NumeroDocumento"),
        Field(142, 8, FieldRule::Date, "data della ricetta", kDataPrescrizione, "DataSpedizione con TipoAccesso 2"),
        Field(150, 8, FieldRule::Date, "DataSpedizione", &Ricetta::DataSpedizione),
        Field(158, 5, FieldRule::Number, "ProgressivoRicettaExport", &Ricetta::ProgressivoRicettaExport),
        Constant(163, 2, FieldRule::Number, "00"),
        Field(165, 3, FieldRule::Number, "BrancaSpecialistica", &Ricetta::BrancaSpecialistica),
    },
    AllSlots(),
    std::tuple{
        Blank(224, 5),
        Constant(229, 2, FieldRule::Number, "00"),
        Field(231, 11, FieldRule::Amount, "TotalePrestazioni", &Ricetta::TotalePrestazioni),
        Field(242, 11, FieldRule::Amount, "TotaleTicket", &Ricetta::TotaleTicket),
        Field(253, 1, FieldRule::Text, "Valuta", &Ricetta::Valuta, "sempre E"),
        Blank(254, 3),
        Field(257, 6, FieldRule::Text, "Esenzione", &Ricetta::Esenzione),
        Blank(263, 14),
        Field(277, 1, FieldRule::Text, "ClassePriorita", &Ricetta::ClassePriorita, "U, B, D, P"),
        Field(278, 2, FieldRule::Number, "TipoAccesso", &Ricetta::TipoAccesso),
        Field(280, 8, FieldRule::Date, "DataContatto", IfBooked(&Ricetta::DataContatto), "zeri con TipoAccesso 2 o 3"),
        Field(288, 8, FieldRule::Date, "DataPrimaDisponibilita", IfBooked(&Ricetta::DataPrimaDisponibilita),
              "zeri con TipoAccesso 2 o 3"),
        Field(296, 8, FieldRule::Date, "DataAssegnata", IfBooked(&Ricetta::DataAssegnata),
              "zeri con TipoAccesso 2 o 3"),
        Field(304, 8, FieldRule::Date, "DataRefertazione", &Ricetta::DataRefertazione),
        Field(312, 8, FieldRule::Date, "DataInizioCiclo", &Ricetta::DataInizioCiclo),
        Field(320, 1, FieldRule::Text, "Garantita", &Ricetta::Garantita, "G o spazio"),
        Field(321, 1, FieldRule::Text, "Suggerita", &Ricetta::Suggerita, "S o spazio"),
        Blank(322, 20),
    });

}  // namespace vlm::puglia
