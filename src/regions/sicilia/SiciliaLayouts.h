#pragma once

#include <array>

#include "record/Layout.h"

/// The lines of the Sicily service file and their readable forms, as the region lays them out.
namespace vlm::sicilia {

inline constexpr int kLineLengthM = 222;
inline constexpr int kLineLengthS = 60;
inline constexpr int kReportLengthM = 101;
inline constexpr int kReportLengthS = 85;

/// `ProgressivoRicetta` of the line that closes a billing document.
inline constexpr int kClosingLine = 99;

enum class Field {
    None,
    CodiceAzienda,
    CodiceRegionale,
    BrancaSpecialistica,
    MedicoPrescrittore,
    Cognome,  // "ANONIMO" for a patient who did not consent
    Nome,
    CodiceFiscale,
    Sesso,
    DataNascita,
    ComuneISTAT,
    ASLResidenza,
    DataPrenotazione,
    NumeroRicetta,
    ProgressivoRicetta,
    Riservato,
    DataConvenzione,
    CodiceNomenclatore,
    CodicePrestazione,  // without points
    Quantita,
    NessunaQuantita,  // 0
    PosizioneUtente,
    Esenzione,
    NessunTicket,  // 0
    TicketRicetta,
    ImportoPrestazione,
    TotaleNetto,  // the document's total less the ticket
    PosizioneContabile,
    Anno,
    NumeroASLStudio,
    NumeroDocumento,
    DistrettoASLStudio,
    CodiceStruttura,
    CodiceBranca,
    ImportoLordo,
    Ticket,
    NumeroPrestazioni,
    Mese,
    Trimestre,
    IdentificativoRecord,
    CognomeENome,
    SessoLettera,
};

using Row = LayoutField<Field>;

/// Monthly detailed line: one for each service and one that closes each document.
inline constexpr std::array kLayoutM = {
    Row{1, 6, FieldRule::Text, Field::CodiceAzienda},
    Row{7, 6, FieldRule::Text, Field::CodiceRegionale},
    Row{13, 2, FieldRule::Number, Field::BrancaSpecialistica},
    Row{15, 16, FieldRule::Text, Field::MedicoPrescrittore},
    Row{31, 30, FieldRule::Text, Field::Cognome},
    Row{61, 20, FieldRule::Text, Field::Nome},
    Row{81, 16, FieldRule::Text, Field::CodiceFiscale},
    Row{97, 1, FieldRule::Number, Field::Sesso},
    Row{98, 8, FieldRule::Text, Field::DataNascita},
    Row{106, 6, FieldRule::Number, Field::ComuneISTAT},
    Row{112, 3, FieldRule::Text, Field::ASLResidenza},
    Row{115, 8, FieldRule::Text, Field::DataPrenotazione},
    Row{123, 16, FieldRule::Text, Field::NumeroRicetta},
    Row{139, 2, FieldRule::Number, Field::ProgressivoRicetta},
    Row{141, 5, FieldRule::Blank, Field::Riservato},
    Row{146, 8, FieldRule::Text, Field::DataConvenzione, Field::None},
    Row{154, 1, FieldRule::Text, Field::CodiceNomenclatore},
    Row{155, 7, FieldRule::Text, Field::CodicePrestazione, Field::None},
    Row{162, 3, FieldRule::Number, Field::Quantita, Field::NessunaQuantita},
    Row{165, 2, FieldRule::Text, Field::None, Field::PosizioneUtente},
    Row{167, 6, FieldRule::Text, Field::Esenzione},
    Row{173, 7, FieldRule::Amount, Field::NessunTicket, Field::TicketRicetta},
    Row{180, 8, FieldRule::Amount, Field::ImportoPrestazione, Field::TotaleNetto},
    Row{188, 1, FieldRule::Text, Field::None, Field::PosizioneContabile},
    Row{189, 4, FieldRule::Text, Field::Anno},
    Row{193, 3, FieldRule::Text, Field::NumeroASLStudio},
    Row{196, 6, FieldRule::Text, Field::CodiceStruttura},
    Row{202, 7, FieldRule::Number, Field::NumeroDocumento},
    Row{209, 14, FieldRule::Blank, Field::None},
};
static_assert(IsLayoutOf(kLayoutM, kLineLengthM));

/// The record identifier: year, health authority, structure and document number of the detailed line.
inline constexpr int kIdentifierPosition = 189;
inline constexpr int kIdentifierLength = 20;

/// Quarterly summary line: one for each month.
inline constexpr std::array kLayoutS = {
    Row{1, 3, FieldRule::Text, Field::NumeroASLStudio},
    Row{4, 2, FieldRule::Text, Field::DistrettoASLStudio},
    Row{6, 6, FieldRule::Text, Field::CodiceStruttura},
    Row{12, 2, FieldRule::Number, Field::CodiceBranca},
    Row{14, 10, FieldRule::Amount, Field::ImportoLordo},
    Row{24, 10, FieldRule::Amount, Field::Ticket},
    Row{34, 6, FieldRule::Number, Field::NumeroPrestazioni},
    Row{40, 2, FieldRule::Number, Field::Mese},
    Row{42, 4, FieldRule::Number, Field::Anno},
    Row{46, 1, FieldRule::Number, Field::Trimestre},
    Row{47, 14, FieldRule::Blank, Field::None},
};
static_assert(IsLayoutOf(kLayoutS, kLineLengthS));

/// The two readable lines of a detailed record.
inline constexpr std::array kReportM1 = {
    Row{1, 6, FieldRule::Text, Field::CodiceAzienda},
    Row{9, 2, FieldRule::Number, Field::BrancaSpecialistica},
    Row{12, 16, FieldRule::Text, Field::CodiceFiscale},
    Row{29, 20, FieldRule::Text, Field::CognomeENome},
    Row{50, 8, FieldRule::ShownDate, Field::DataPrenotazione},
    Row{60, 1, FieldRule::Text, Field::SessoLettera},
    Row{62, 6, FieldRule::Number, Field::ComuneISTAT},
    Row{69, 16, FieldRule::Text, Field::NumeroRicetta},
    Row{86, 1, FieldRule::Text, Field::None, Field::PosizioneContabile},
    Row{88, 3, FieldRule::Number, Field::Quantita, Field::NessunaQuantita},
    Row{93, 9, FieldRule::ShownAmount, Field::NessunTicket, Field::TicketRicetta},
};
static_assert(IsLayoutOf(kReportM1, kReportLengthM));

inline constexpr std::array kReportM2 = {
    Row{1, 6, FieldRule::Text, Field::CodiceRegionale},
    Row{8, 16, FieldRule::Text, Field::MedicoPrescrittore},
    Row{25, 20, FieldRule::Text, Field::IdentificativoRecord},
    Row{46, 8, FieldRule::ShownDate, Field::DataNascita},
    Row{56, 1, FieldRule::Text, Field::CodiceNomenclatore, Field::None},
    Row{58, 3, FieldRule::Text, Field::ASLResidenza},
    Row{62, 2, FieldRule::Text, Field::None, Field::PosizioneUtente},
    Row{65, 8, FieldRule::ShownDate, Field::DataConvenzione, Field::None},
    Row{74, 7, FieldRule::Text, Field::CodicePrestazione, Field::None},
    Row{82, 6, FieldRule::Text, Field::Esenzione},
    Row{89, 2, FieldRule::Number, Field::ProgressivoRicetta},
    Row{93, 9, FieldRule::ShownAmount, Field::ImportoPrestazione},
};
static_assert(IsLayoutOf(kReportM2, kReportLengthM));

/// The readable line of a summary record.
inline constexpr std::array kReportS = {
    Row{1, 3, FieldRule::Text, Field::NumeroASLStudio},
    Row{8, 2, FieldRule::Text, Field::DistrettoASLStudio},
    Row{16, 6, FieldRule::Text, Field::CodiceStruttura},
    Row{26, 2, FieldRule::Number, Field::CodiceBranca},
    Row{31, 10, FieldRule::ShownAmount, Field::ImportoLordo},
    Row{42, 10, FieldRule::ShownAmount, Field::Ticket},
    Row{55, 6, FieldRule::Text, Field::NumeroPrestazioni},
    Row{66, 2, FieldRule::Number, Field::Mese},
    Row{70, 4, FieldRule::Number, Field::Anno},
    Row{79, 1, FieldRule::Number, Field::Trimestre},
    Row{80, 6, FieldRule::Blank, Field::None},
};
static_assert(IsLayoutOf(kReportS, kReportLengthS));

}  // namespace vlm::sicilia
