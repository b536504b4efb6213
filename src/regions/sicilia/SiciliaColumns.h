#pragma once

#include "SiciliaRecord.h"
#include "record/Columns.h"

/// The columns that the detailed record reads, in the order in which they are looked up and read.
namespace vlm::sicilia {

inline constexpr auto kAzienda = [](Record& record, const data::Recordset& rows, int at) {
    record.CodiceAzienda.AssignParts(FixedText<3>(rows.TextOf(at)), record.NumeroASLStudio);
};
/// The family doctor's code stands in where the prescribing doctor has no fiscal code; a blank one counts as one.
inline constexpr auto kMedico = [](Record& record, const data::Recordset& rows, int at) {
    const std::string_view code = rows.TextOf(at);
    record.HaMedico = !code.empty();
    record.MedicoPrescrittore = code;
};
inline constexpr auto kMedicoFiducia = [](Record& record, const data::Recordset& rows, int at) {
    if (!record.HaMedico) record.MedicoPrescrittore = rows.TextOf(at);
};
inline constexpr auto kInCapitals = [](auto& member, const data::Recordset& rows, int at) {
    member.AssignUpper(rows.TextOf(at));
};
inline constexpr auto kSesso = [](std::int16_t& member, const data::Recordset& rows, int at) {
    const std::string_view sesso = rows.TextOf(at);
    member = sesso == "M" ? 1 : sesso == "F" ? 2 : 0;
};
inline constexpr auto kNumRicetta2 = [](FixedText<16>& member, const data::Recordset& rows, int at) {
    member.AssignParts(FixedText<7>(member.View()), FixedText<9>(rows.TextOf(at)));
};
inline constexpr auto kAtLeastOne = [](std::int16_t& member, const data::Recordset& rows, int at) {
    member = rows.Int16Of(at);
    if (member == 0) member = 1;
};
/// Position 3 (fully exempt) counts as 1 in the region's layout.
inline constexpr auto kPosizione = [](FixedText<2>& member, const data::Recordset& rows, int at) {
    const double position = rows.NumberOf(at);
    member = position <= 0 ? "0" : position == 3 ? "1" : text::NumberText(position);
};
inline constexpr auto kNumberAsText = [](auto& member, const data::Recordset& rows, int at) {
    member = text::NumberText(rows.NumberOf(at));
};
inline constexpr auto kCivil = [](Date::Civil& member, const data::Recordset& rows, int at) {
    member = rows.CivilOf(at).value_or(Date::Civil{});
};

inline constexpr std::tuple kColumns{
    Column{"CodiceRegione", &Record::CodiceAzienda, kAzienda},
    Column{"CodiceRegionale", &Record::CodiceRegionale},
    Column{"CodiceBranca", &Record::BrancaSpecialistica},
    Column{"MED_CodiceFiscale", &Record::MedicoPrescrittore, kMedico},
    Column{"CodRegMedicoFiducia", &Record::MedicoPrescrittore, kMedicoFiducia},
    Column{"PAZ_Cognome", &Record::Cognome, kInCapitals},
    Column{"PAZ_Nome", &Record::Nome, kInCapitals},
    Column{"PAZ_CodiceFiscale", &Record::CodiceFiscale},
    Column{"PAZ_Sesso", &Record::Sesso, kSesso},
    Column{"PAZ_DataNascita", &Record::DataNascita, kDateText},
    Column{"CodiceISTAT", &Record::ComuneISTAT},
    Column{"NumeroASL", &Record::ASLResidenza},
    Column{"NumRicetta1", &Record::NumeroRicetta},
    Column{"NumRicetta2", &Record::NumeroRicetta, kNumRicetta2},
    Column{"CodicePrestazioneTariffario", &Record::CodicePrestazione},
    Column{"Quantita", &Record::Quantita, kAtLeastOne},
    Column{"DataAiFiniConvenzione", &Record::DataConvenzione, kDateText},
    Column{"IDPosizioneTicket", &Record::PosizioneUtente, kPosizione},
    Column{"PS_CodiceIdentificativo", &Record::Esenzione},
    Column{"TotQuotaPazienteTicketEuro", &Record::TicketRicetta},
    Column{"QuotaRicettaEuro", &Record::TicketRicetta, kAdded},
    Column{"TotaleEuro", &Record::ImportoPrestazione},
    Column{"IDPosizioneContabile", &Record::PosizioneContabile, kNumberAsText},
    Column{"IDParcella", &Record::IDParcella, kKey},
    Column{"NumeroDocumento", &Record::NumeroDocumento, kKey},
    Column{"DataDocumento", &Record::DataDocumento, kCivil},
    Column{"IDConsenso", &Record::IDConsenso},
    Column{"IDTipoDocumento", &Record::IDTipoDocumento},
    Column{"NP_PrefissoNumerazione", &Record::PrefissoNumerazione},
    Column{"DataPrenotazione", &Record::DataPrenotazione, kDateText},
};

}  // namespace vlm::sicilia
