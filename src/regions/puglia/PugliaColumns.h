#pragma once

#include "Priorita.h"
#include "PugliaRecord.h"
#include "export/RegionRun.h"
#include "record/Columns.h"
#include "values/Error.h"

/// The columns that the Puglia record reads, in the order in which they are looked up and read. Nulls are "" and 0; a
/// document number, date or amount that cannot be read throws, and so does a ninth service.
namespace vlm::puglia {

/// Automation's number for "Subscript out of range".
inline constexpr std::int32_t kSubscriptError = 9;

inline std::string LabelOf(const Ricetta& ricetta) {
    return DocumentLabel(ricetta.IDTipoDocumento, ricetta.PrefissoNumerazione, ricetta.NumeroDocumento,
                         ricetta.DataDocumento);
}

inline constexpr auto kIfEmpty = [](std::string& member, const data::Recordset& rows, int at) {
    if (member.empty()) member = rows.TextOf(at);
};
inline constexpr auto kSesso = [](std::string& member, const data::Recordset& rows, int at) {
    const std::string_view sesso = rows.TextOf(at);
    member = sesso == "M" ? "1" : sesso == "F" ? "2" : "0";
};
inline constexpr auto kNumRicetta1 = [](std::string& member, const data::Recordset& rows, int at) {
    member = text::Trim(rows.TextOf(at));
};
/// The second part follows the first; zeros follow both up to the field's width.
inline constexpr auto kNumRicetta2 = [](std::string& member, const data::Recordset& rows, int at) {
    constexpr std::size_t kLength = 16;
    member += text::Trim(rows.TextOf(at));
    member.resize(text::Left(member, kLength).size());
    member.append(kLength - text::Length(member), '0');
};
inline constexpr auto kFirstSix = [](std::string& member, const data::Recordset& rows, int at) {
    member = text::Left(rows.TextOf(at), 6);
};
/// The exemption category that the region codes as "1".
inline constexpr auto kCategoria = [](std::string& member, const data::Recordset& rows, int at) {
    if (rows.NumberOf(at) == 5) member = "1";
};
inline constexpr auto kClassePriorita = [](std::string& member, const data::Recordset& rows, int at) {
    member = PrioritaCodice(rows.NumberOf(at));
};
inline constexpr auto kGarantita = [](std::string& member, const data::Recordset& rows, int at) {
    member = rows.NumberOf(at) != 0 ? "G" : "";
};
/// The kind of request of a suggested prescription.
inline constexpr auto kSuggerita = [](std::string& member, const data::Recordset& rows, int at) {
    member = rows.NumberOf(at) == 3 ? "S" : "";
};
inline constexpr auto kDate = [](Date& member, const data::Recordset& rows, int at) {
    member = rows.DateOf(at).value_or(Date{});
};

/// The slot of the row's service.
inline Prestazione& SlotOf(Ricetta& ricetta) {
    const int number = ricetta.ProgressivoRicetta;
    if (number < 1 || static_cast<std::size_t>(number) > kMostPrestazioni) {
        throw Error("Indice non compreso nell'intervallo: " + LabelOf(ricetta) + "una ricetta può avere al massimo " +
                        std::to_string(kMostPrestazioni) + " prestazioni.",
                    kSubscriptError);
    }
    return ricetta.Prestazioni[static_cast<std::size_t>(number) - 1];
}
inline constexpr auto kCodiceTariffario = [](Ricetta& ricetta, const data::Recordset& rows, int at) {
    SlotOf(ricetta).Codice = rows.TextOf(at);
};
inline constexpr auto kCodice = [](Ricetta& ricetta, const data::Recordset& rows, int at) {
    kIfEmpty(SlotOf(ricetta).Codice, rows, at);
};
inline constexpr auto kQuantita = [](Ricetta& ricetta, const data::Recordset& rows, int at) {
    const std::int16_t quantity = rows.Int16Of(at);
    SlotOf(ricetta).Quantita = quantity == 0 ? 1 : quantity;
};
inline constexpr auto kCiclica = [](Ricetta& ricetta, const data::Recordset& rows, int at) {
    SlotOf(ricetta).Ciclica = rows.NumberOf(at) != 0;
};

inline constexpr std::tuple kColumns{
    // Structure and patient.
    Column{"CodiceRegionale", &Ricetta::CodiceRegionale},
    Column{"CodRegMedicoFiducia", &Ricetta::MedicoPrescrittore},
    Column{"PAZ_Cognome", &Ricetta::Cognome},
    Column{"PAZ_Nome", &Ricetta::Nome},
    Column{"NumAssistito", &Ricetta::CodiceAssistito},
    Column{"NumTesseraSanitaria", &Ricetta::CodiceAssistito, kIfEmpty},
    Column{"PAZ_CodiceFiscale", &Ricetta::CodiceFiscale},
    Column{"PAZ_Sesso", &Ricetta::Sesso, kSesso},
    Column{"PAZ_DataNascita", &Ricetta::DataNascita, kDateText},
    Column{"CodiceISTAT", &Ricetta::ComuneISTAT},
    Column{"CodiceRegione", &Ricetta::CodiceRegione},
    Column{"NumeroASL", &Ricetta::ASLResidenza},
    // Prescription.
    Column{"NumRicetta1", &Ricetta::NumeroRicetta, kNumRicetta1},
    Column{"NumRicetta2", &Ricetta::NumeroRicetta, kNumRicetta2},
    Column{"DataRilascioRicetta", &Ricetta::DataRilascio, kDateText},
    Column{"DataAiFiniConvenzione", &Ricetta::DataSpedizione, kDateText},
    Column{"ProgressivoRicetta", &Ricetta::ProgressivoRicettaExport},
    Column{"CodiceBranca", &Ricetta::BrancaSpecialistica},
    Column{"TotTicketEuro", &Ricetta::TotalePrestazioni},
    Column{"TotQuotaPazienteTicketEuro", &Ricetta::TotaleTicket},
    Column{"PS_CodiceIdentificativo", &Ricetta::Esenzione, kFirstSix},
    Column{"PS_IDCategoriaDiAppartenenza", &Ricetta::Esenzione, kCategoria},
    Column{"IDPrioritaRicetta", &Ricetta::ClassePriorita, kClassePriorita},
    Column{"IDTipoAccesso", &Ricetta::TipoAccesso},
    Column{"DataContatto", &Ricetta::DataContatto, kDateText},
    Column{"DataPrimaDisponibilita", &Ricetta::DataPrimaDisponibilita, kDateText},
    Column{"DataAssegnata", &Ricetta::DataAssegnata, kDateText},
    Column{"DataRefertazione", &Ricetta::DataRefertazione, kDateText},
    Column{"DataInizioCiclo", &Ricetta::DataInizioCiclo, kDateText},
    Column{"PrescrizioneGarantita", &Ricetta::Garantita, kGarantita},
    Column{"IDTipoRichiesta", &Ricetta::Suggerita, kSuggerita},
    // Billing document.
    Column{"IDParcella", &Ricetta::IDParcella, kKey},
    Column{"NumeroDocumento", &Ricetta::NumeroDocumento, kKey},
    Column{"IDConsenso", &Ricetta::IDConsenso},
    Column{"IDTipoDocumento", &Ricetta::IDTipoDocumento},
    Column{"DataDocumento", &Ricetta::DataDocumento, kDate},
    Column{"NP_PrefissoNumerazione", &Ricetta::PrefissoNumerazione},
    Column{"DataPrenotazione", &Ricetta::DataPrenotazione, kDateText},
    // Service.
    Column{"CodicePrestazioneTariffario", &Ricetta::Prestazioni, kCodiceTariffario},
    Column{"CodicePrestazione", &Ricetta::Prestazioni, kCodice},
    Column{"Quantita", &Ricetta::Prestazioni, kQuantita},
    Column{"PrestazioneCiclica", &Ricetta::Prestazioni, kCiclica},
};

}  // namespace vlm::puglia
