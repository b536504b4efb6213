#pragma once

#include "record/Layout.h"

/// The record of the Sicily service file, its lines and their readable forms, as the region lays them out.
namespace vlm::sicilia {

/// `ProgressivoRicetta` of the line that closes a billing document.
inline constexpr int kClosingLine = 99;

/// The detailed record is filled from a row of the services or from a written line, the summary by the run.
struct Record {
    FixedText<6> CodiceAzienda;  // region and health authority
    FixedText<6> CodiceRegionale;
    std::int16_t BrancaSpecialistica = 0;
    FixedText<16> MedicoPrescrittore;
    bool HaMedico = false;  // the row names a prescribing doctor
    FixedText<30> Cognome;
    FixedText<20> Nome;
    FixedText<16> CodiceFiscale;
    std::int16_t Sesso = 0;    // 1 male, 2 female, 0 unknown
    FixedText<8> DataNascita;  // dates are "ddmmyyyy", blank for none
    std::int32_t ComuneISTAT = 0;
    FixedText<3> ASLResidenza;
    FixedText<8> DataPrenotazione;
    FixedText<16> NumeroRicetta;
    std::int16_t ProgressivoRicetta = 0;  // of the row within its document, or kClosingLine
    FixedText<5> Riservato;
    FixedText<8> DataConvenzione;
    FixedText<1> CodiceNomenclatore;
    FixedText<7> CodicePrestazione;
    std::int16_t Quantita = 0;
    FixedText<2> PosizioneUtente;
    FixedText<6> Esenzione;
    Currency TicketRicetta;
    Currency ImportoPrestazione;
    Currency TotaleRicetta;  // of the document's rows so far
    FixedText<1> PosizioneContabile;
    FixedText<20> IdentificativoRecord;  // filled only from a written line
    // The billing document.
    std::int32_t IDParcella = 0;
    std::int32_t IDTipoDocumento = 0;
    std::int32_t NumeroDocumento = 0;
    Date::Civil DataDocumento;
    std::int32_t IDConsenso = 0;
    std::string PrefissoNumerazione;
    // Summary, and the clinic's identity.
    FixedText<3> NumeroASLStudio;
    FixedText<2> DistrettoASLStudio;
    std::string CodiceStruttura;
    std::string CodiceBranca;
    Currency ImportoLordo;
    Currency Ticket;
    std::int32_t NumeroPrestazioni = 0;  // a run counts in 16 bits, a written line may hold six digits
    std::int16_t Mese = 0;               // 0 while no month is open
    std::int16_t Anno = 0;

    bool IsClosingLine() const noexcept { return ProgressivoRicetta == kClosingLine; }
};

// What only one of a document's two kinds of line has.
constexpr auto InService(auto member) {
    return Only{member, [](const Record& record) { return !record.IsClosingLine(); }};
}
constexpr auto InClosing(auto member) {
    return Only{member, [](const Record& record) { return record.IsClosingLine(); }};
}

/// The consent code of a patient who is named in the file.
inline constexpr std::int32_t kConsensoNominativo = 2;

template <std::size_t Width>
constexpr auto IfNamed(FixedText<Width> Record::*member) {
    return Derived{member, [member](const Record& record) -> const FixedText<Width>& {
                       static constexpr FixedText<Width> kAnonimo("ANONIMO");
                       return record.IDConsenso == kConsensoNominativo ? record.*member : kAnonimo;
                   }};
}
inline constexpr Derived kCodicePrestazione{
    &Record::CodicePrestazione, [](const Record& record) {
        return record.IsClosingLine() ? std::string() : text::Without(record.CodicePrestazione.View(), '.');
    }};
inline constexpr Derived kQuantita{
    &Record::Quantita, [](const Record& record) { return record.IsClosingLine() ? std::int16_t{0} : record.Quantita; }};
inline constexpr Derived kTicket{&Record::TicketRicetta, [](const Record& record) {
                                     return record.IsClosingLine() ? record.TicketRicetta : Currency{};
                                 }};
/// In the closing line the document's total less the ticket.
inline constexpr Derived kImporto{&Record::ImportoPrestazione, [](const Record& record) {
                                      return record.IsClosingLine() ? record.TotaleRicetta - record.TicketRicetta
                                                                    : record.ImportoPrestazione;
                                  }};
inline constexpr auto kYearOfService = [](const Record& record) {
    return text::Right(record.DataConvenzione.View(), 4);
};
inline constexpr auto kNumeroASLOfAzienda = [](const Record& record) {
    return text::Right(record.CodiceAzienda.View(), 3);
};
std::int16_t Trimestre(const Record& record);
std::string CognomeENome(const Record& record);
inline constexpr auto kSessoLettera = [](const Record& record) -> std::string_view {
    return record.Sesso == 1 ? "M" : "F";
};

/// Monthly detailed line: one for each service and one that closes each document.
inline constexpr Layout kLayoutM(
    222, kCommonFields,  //
    Field(1, 6, FieldRule::Text, "CodiceAzienda", &Record::CodiceAzienda, kAsItStands),
    Field(7, 6, FieldRule::Text, "CodiceRegionale", &Record::CodiceRegionale, kTrimmed),
    Field(13, 2, FieldRule::Number, "BrancaSpecialistica", &Record::BrancaSpecialistica, kReadAsNumber),
    Field(15, 16, FieldRule::Text, "MedicoPrescrittore", &Record::MedicoPrescrittore, kTrimmed),
    Field(31, 30, FieldRule::Text, "Cognome", IfNamed(&Record::Cognome), kTrimmed, "ANONIMO senza consenso nominativo"),
    Field(61, 20, FieldRule::Text, "Nome", IfNamed(&Record::Nome), kTrimmed, "ANONIMO senza consenso nominativo"),
    Field(81, 16, FieldRule::Text, "CodiceFiscale", &Record::CodiceFiscale, kTrimmed),
    Field(97, 1, FieldRule::Number, "Sesso", &Record::Sesso, kReadAsNumber, "1 maschio, 2 femmina, 0 ignoto"),
    Field(98, 8, FieldRule::Text, "DataNascita", &Record::DataNascita, kAsItStands),
    Field(106, 6, FieldRule::Number, "ComuneISTAT", &Record::ComuneISTAT, kReadAsNumber),
    Field(112, 3, FieldRule::Text, "ASLResidenza", &Record::ASLResidenza, kTrimmed),
    Field(115, 8, FieldRule::Text, "DataPrenotazione", &Record::DataPrenotazione, kTrimmed),
    Field(123, 16, FieldRule::Text, "NumeroRicetta", &Record::NumeroRicetta, kTrimmed),
    Field(139, 2, FieldRule::Number, "ProgressivoRicetta", &Record::ProgressivoRicetta, kReadAsNumber,
          "99 nella riga di chiusura"),
    Field(141, 5, FieldRule::Blank, "spazi", &Record::Riservato, kAsItStands),
    Field(146, 8, FieldRule::Text, "DataConvenzione", InService(&Record::DataConvenzione), kAsItStands,
          "spazi nella riga di chiusura"),
    Field(154, 1, FieldRule::Text, "CodiceNomenclatore", &Record::CodiceNomenclatore, kAsItStands, "sempre x"),
    Field(155, 7, FieldRule::Text, "CodicePrestazione", kCodicePrestazione, kTrimmed,
          "senza punti; spazi nella riga di chiusura"),
    Field(162, 3, FieldRule::Number, "Quantita", kQuantita, kReadAsNumber, "000 nella riga di chiusura"),
    Field(165, 2, FieldRule::Text, "PosizioneUtente", InClosing(&Record::PosizioneUtente), kTrimmed,
          "solo nella riga di chiusura"),
    Field(167, 6, FieldRule::Text, "Esenzione", &Record::Esenzione, kAsItStands),
    Field(173, 7, FieldRule::Amount, "TicketRicetta", kTicket, kReadAsAmount, "0000,00 nella riga di prestazione"),
    Field(180, 8, FieldRule::Amount, "ImportoPrestazione", kImporto, kReadAsAmount,
          "nella riga di chiusura TotaleRicetta meno TicketRicetta"),
    Field(188, 1, FieldRule::Text, "PosizioneContabile", InClosing(&Record::PosizioneContabile), kAsItStands,
          "solo nella riga di chiusura"),
    Field(189, 4, FieldRule::Text, "anno di DataConvenzione", kYearOfService),
    Field(193, 3, FieldRule::Text, "NumeroASLStudio", kNumeroASLOfAzienda, "gli ultimi 3 caratteri di CodiceAzienda"),
    Field(196, 6, FieldRule::Text, "CodiceRegionale", &Record::CodiceRegionale),
    Field(202, 7, FieldRule::Number, "NumeroDocumento", &Record::NumeroDocumento),  //
    Blank(209, 14));

/// The record identifier: year, health authority, structure and document number of the detailed line.
inline constexpr FieldPlace kIdentifier{189, 20, FieldRule::Text};

/// Quarterly summary line: one for each month.
inline constexpr Layout kLayoutS(
    60, kCommonFields,  //
    Field(1, 3, FieldRule::Text, "NumeroASLStudio", &Record::NumeroASLStudio, kAsItStands),
    Field(4, 2, FieldRule::Text, "DistrettoASLStudio", &Record::DistrettoASLStudio, kAsItStands),
    Field(6, 6, FieldRule::Text, "CodiceStruttura", &Record::CodiceStruttura, kAsItStands),
    Field(12, 2, FieldRule::Number, "CodiceBranca", &Record::CodiceBranca, kAsItStands),
    Field(14, 10, FieldRule::Amount, "ImportoLordo", &Record::ImportoLordo, kReadAsAmount, "del mese"),
    Field(24, 10, FieldRule::Amount, "Ticket", &Record::Ticket, kReadAsAmount, "uno per documento"),
    Field(34, 6, FieldRule::Number, "NumeroPrestazioni", &Record::NumeroPrestazioni, kReadAsNumber),
    Field(40, 2, FieldRule::Number, "Mese", &Record::Mese, kReadAsNumber),
    Field(42, 4, FieldRule::Number, "Anno", &Record::Anno, kReadAsNumber),
    Field(46, 1, FieldRule::Number, "trimestre di Mese", Trimestre),  //
    Blank(47, 14));

/// The two readable lines of a detailed record.
inline constexpr Layout kReportM1(  //
    101, kCommonFields,             //
    Field(1, 6, FieldRule::Text, "CodiceAzienda", &Record::CodiceAzienda),
    Field(9, 2, FieldRule::Number, "BrancaSpecialistica", &Record::BrancaSpecialistica),
    Field(12, 16, FieldRule::Text, "CodiceFiscale", &Record::CodiceFiscale),
    Field(29, 20, FieldRule::Text, "Cognome e Nome", CognomeENome),
    Field(50, 8, FieldRule::ShownDate, "DataPrenotazione", &Record::DataPrenotazione),
    Field(60, 1, FieldRule::Text, "Sesso", kSessoLettera),
    Field(62, 6, FieldRule::Number, "ComuneISTAT", &Record::ComuneISTAT),
    Field(69, 16, FieldRule::Text, "NumeroRicetta", &Record::NumeroRicetta),
    Field(86, 1, FieldRule::Text, "PosizioneContabile", InClosing(&Record::PosizioneContabile)),
    Field(88, 3, FieldRule::Number, "Quantita", kQuantita),
    Field(93, 9, FieldRule::ShownAmount, "TicketRicetta", kTicket));

inline constexpr Layout kReportM2(  //
    101, kCommonFields,             //
    Field(1, 6, FieldRule::Text, "CodiceRegionale", &Record::CodiceRegionale),
    Field(8, 16, FieldRule::Text, "MedicoPrescrittore", &Record::MedicoPrescrittore),
    Field(25, 20, FieldRule::Text, "IdentificativoRecord", &Record::IdentificativoRecord),
    Field(46, 8, FieldRule::ShownDate, "DataNascita", &Record::DataNascita),
    Field(56, 1, FieldRule::Text, "CodiceNomenclatore", InService(&Record::CodiceNomenclatore)),
    Field(58, 3, FieldRule::Text, "ASLResidenza", &Record::ASLResidenza),
    Field(62, 2, FieldRule::Text, "PosizioneUtente", InClosing(&Record::PosizioneUtente)),
    Field(65, 8, FieldRule::ShownDate, "DataConvenzione", InService(&Record::DataConvenzione)),
    Field(74, 7, FieldRule::Text, "CodicePrestazione", kCodicePrestazione),
    Field(82, 6, FieldRule::Text, "Esenzione", &Record::Esenzione),
    Field(89, 2, FieldRule::Number, "ProgressivoRicetta", &Record::ProgressivoRicetta),
    Field(93, 9, FieldRule::ShownAmount, "ImportoPrestazione", &Record::ImportoPrestazione));

/// The readable line of a summary record.
inline constexpr Layout kReportS(  //
    85, kCommonFields,             //
    Field(1, 3, FieldRule::Text, "NumeroASLStudio", &Record::NumeroASLStudio),
    Field(8, 2, FieldRule::Text, "DistrettoASLStudio", &Record::DistrettoASLStudio),
    Field(16, 6, FieldRule::Text, "CodiceStruttura", &Record::CodiceStruttura),
    Field(26, 2, FieldRule::Number, "CodiceBranca", &Record::CodiceBranca),
    Field(31, 10, FieldRule::ShownAmount, "ImportoLordo", &Record::ImportoLordo),
    Field(42, 10, FieldRule::ShownAmount, "Ticket", &Record::Ticket),
    Field(55, 6, FieldRule::Text, "NumeroPrestazioni", &Record::NumeroPrestazioni),
    Field(66, 2, FieldRule::Number, "Mese", &Record::Mese), Field(70, 4, FieldRule::Number, "Anno", &Record::Anno),
    Field(79, 1, FieldRule::Number, "trimestre di Mese", Trimestre),  //
    Blank(80, 6));

}  // namespace vlm::sicilia
