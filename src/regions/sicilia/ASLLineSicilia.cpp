#include "ASLLineSicilia.h"

#include "SiciliaChecks.h"
#include "export/RowReads.h"
#include "frame/ModGeneral.h"
#include "values/Number.h"
#include "values/Utf8.h"

namespace vlm {

using sicilia::Field;

namespace {

/// The consent code of a patient who is named in the file.
constexpr std::int32_t kConsensoNominativo = 2;
constexpr std::string_view kAnonimo = "ANONIMO";

std::string NamesTogether(std::string_view cognome, std::string_view nome) {
    return std::string(text::Trim(std::string(cognome).append(" ").append(nome)));
}

}  // namespace

int ASLLineSicilia::LineLenght() const noexcept {
    return TipoTracciato == ttM ? sicilia::kLineLengthM : TipoTracciato == ttS ? sicilia::kLineLengthS : 0;
}

void ASLLineSicilia::SetProgressivoRicetta(std::int16_t value) {
    progressivoRicetta_ = value;
    if (value == 0) totaleRicetta_ = Currency{};
}

void ASLLineSicilia::SetRs(data::Recordset* rs) {
    rs_ = rs;
    if (rs == nullptr || TipoTracciato != ttM) return;
    const auto bind = [rs](std::string_view name) { return rs->Ordinal(name); };
    columns_ = {bind("CodiceRegione"),
                bind("CodiceRegionale"),
                bind("CodiceBranca"),
                bind("MED_CodiceFiscale"),
                bind("CodRegMedicoFiducia"),
                bind("PAZ_Cognome"),
                bind("PAZ_Nome"),
                bind("PAZ_CodiceFiscale"),
                bind("PAZ_Sesso"),
                bind("PAZ_DataNascita"),
                bind("CodiceISTAT"),
                bind("NumeroASL"),
                bind("NumRicetta1"),
                bind("NumRicetta2"),
                bind("CodicePrestazioneTariffario"),
                bind("Quantita"),
                bind("DataAiFiniConvenzione"),
                bind("IDPosizioneTicket"),
                bind("PS_CodiceIdentificativo"),
                bind("TotQuotaPazienteTicketEuro"),
                bind("QuotaRicettaEuro"),
                bind("TotaleEuro"),
                bind("IDPosizioneContabile"),
                bind("IDParcella"),
                bind("NumeroDocumento"),
                bind("DataDocumento"),
                bind("IDConsenso"),
                bind("IDTipoDocumento"),
                bind("NP_PrefissoNumerazione"),
                bind("DataPrenotazione")};
}

void ASLLineSicilia::ReadData() {
    if (rs_ == nullptr) return;
    ReadPatient();
    ReadService();
    ReadDocument();
    progressivoRicetta_ = text::ToInt16(progressivoRicetta_ + 1, "ProgressivoRicetta");
    totaleRicetta_ += importoPrestazione_;
}

void ASLLineSicilia::ReadPatient() {
    const data::Recordset& rs = *rs_;
    codiceAzienda_.AssignParts(FixedText<3>(rs.TextOf(columns_.codiceRegione)), numeroASLStudio_);
    codiceRegionale_ = rs.TextOf(columns_.codiceRegionale);
    brancaSpecialistica_ = rs.Int16Of(columns_.codiceBranca);
    const std::string_view medico = rs.TextOf(columns_.medico);
    medicoPrescrittore_ = medico.empty() ? rs.TextOf(columns_.medicoFiducia) : medico;
    cognome_.AssignUpper(rs.TextOf(columns_.cognome));
    nome_.AssignUpper(rs.TextOf(columns_.nome));
    codiceFiscale_ = rs.TextOf(columns_.codiceFiscale);
    const std::string_view sesso = rs.TextOf(columns_.sesso);
    sesso_ = sesso == "M" ? 1 : sesso == "F" ? 2 : 0;
    dataNascita_ = DateFieldOf(rs, columns_.dataNascita);
    comuneISTAT_ = rs.Int32Of(columns_.codiceISTAT);
    aslResidenza_ = rs.TextOf(columns_.numeroASL);
}

void ASLLineSicilia::ReadService() {
    const data::Recordset& rs = *rs_;
    numeroRicetta_.AssignParts(FixedText<7>(rs.TextOf(columns_.numRicetta1)),
                               FixedText<9>(rs.TextOf(columns_.numRicetta2)));
    codiceNomenclatore_ = "x";
    codicePrestazione_ = rs.TextOf(columns_.prestazione);
    quantita_ = rs.Int16Of(columns_.quantita);
    if (quantita_ == 0) quantita_ = 1;
    dataConvenzione_ = DateFieldOf(rs, columns_.dataConvenzione);
    // Position 3 (fully exempt) counts as 1 in the region's layout.
    const double posizione = rs.NumberOf(columns_.posizioneTicket);
    posizioneUtente_ = posizione <= 0 ? "0" : posizione == 3 ? "1" : text::NumberText(posizione);
    esenzione_ = rs.TextOf(columns_.esenzione);
    ticketRicetta_ = rs.AmountOf(columns_.quotaTicket) + rs.AmountOf(columns_.quotaRicetta);
    importoPrestazione_ = rs.AmountOf(columns_.totale);
    posizioneContabile_ = text::NumberText(rs.NumberOf(columns_.posizioneContabile));
}

void ASLLineSicilia::ReadDocument() {
    const data::Recordset& rs = *rs_;
    idParcella_ = KeyOf(rs, columns_.idParcella);
    numeroDocumento_ = KeyOf(rs, columns_.numeroDocumento);
    idConsenso_ = rs.Int32Of(columns_.idConsenso);
    idTipoDocumento_ = rs.Int32Of(columns_.idTipoDocumento);
    dataDocumento_ = rs.CivilOf(columns_.dataDocumento).value_or(Date::Civil{});
    prefissoNumerazione_ = rs.TextOf(columns_.prefisso);
    dataPrenotazione_ = DateFieldOf(rs, columns_.dataPrenotazione);
}

std::string ASLLineSicilia::GetErrors() const {
    return TipoTracciato == ttM ? SiciliaChecks::Run(*this) : std::string{};
}

const std::string& ASLLineSicilia::GetFormattedLine() {
    if (TipoTracciato == ttM) {
        Write(line_, sicilia::kLayoutM, sicilia::kLineLengthM);
    } else if (TipoTracciato == ttS) {
        Write(line_, sicilia::kLayoutS, sicilia::kLineLengthS);
    } else {
        line_.clear();
    }
    return line_;
}

void ASLLineSicilia::PutField(FixedLine& line, const FieldPlace& place, Field field) const {
    if (field <= Field::NumeroRicetta) return PutPatient(line, place, field);
    if (field <= Field::PosizioneContabile) return PutService(line, place, field);
    PutSummary(line, place, field);
}

void ASLLineSicilia::PutPatient(FixedLine& line, const FieldPlace& place, Field field) const {
    const bool named = idConsenso_ == kConsensoNominativo;
    switch (field) {
        case Field::CodiceAzienda:
            return format_.Place(line, place, codiceAzienda_);
        case Field::CodiceRegionale:
            return format_.Place(line, place, codiceRegionale_);
        case Field::BrancaSpecialistica:
            return format_.Place(line, place, std::int64_t{brancaSpecialistica_});
        case Field::MedicoPrescrittore:
            return format_.Place(line, place, medicoPrescrittore_);
        case Field::Cognome:
            return named ? format_.Place(line, place, cognome_) : format_.Place(line, place, kAnonimo);
        case Field::Nome:
            return named ? format_.Place(line, place, nome_) : format_.Place(line, place, kAnonimo);
        case Field::CodiceFiscale:
            return format_.Place(line, place, codiceFiscale_);
        case Field::Sesso:
            return format_.Place(line, place, std::int64_t{sesso_});
        case Field::DataNascita:
            return format_.Place(line, place, dataNascita_);
        case Field::ComuneISTAT:
            return format_.Place(line, place, std::int64_t{comuneISTAT_});
        case Field::ASLResidenza:
            return format_.Place(line, place, aslResidenza_);
        case Field::DataPrenotazione:
            return format_.Place(line, place, dataPrenotazione_);
        case Field::NumeroRicetta:
            return format_.Place(line, place, numeroRicetta_);
        default:
            return;  // spaces
    }
}

void ASLLineSicilia::PutService(FixedLine& line, const FieldPlace& place, Field field) const {
    switch (field) {
        case Field::ProgressivoRicetta:
            return format_.Place(line, place, std::int64_t{progressivoRicetta_});
        case Field::DataConvenzione:
            return format_.Place(line, place, dataConvenzione_);
        case Field::CodiceNomenclatore:
            return format_.Place(line, place, codiceNomenclatore_);
        case Field::CodicePrestazione:
            return format_.Place(line, place, text::Without(codicePrestazione_.View(), '.'));
        case Field::Quantita:
            return format_.Place(line, place, std::int64_t{quantita_});
        case Field::NessunaQuantita:
            return format_.Place(line, place, std::int64_t{0});
        case Field::PosizioneUtente:
            return format_.Place(line, place, posizioneUtente_);
        case Field::Esenzione:
            return format_.Place(line, place, esenzione_);
        case Field::NessunTicket:
            return format_.Place(line, place, Currency{});
        case Field::TicketRicetta:
            return format_.Place(line, place, ticketRicetta_);
        case Field::ImportoPrestazione:
            return format_.Place(line, place, importoPrestazione_);
        case Field::TotaleNetto:
            return format_.Place(line, place, totaleRicetta_ - ticketRicetta_);
        case Field::PosizioneContabile:
            return format_.Place(line, place, posizioneContabile_);
        default:
            return;  // spaces
    }
}

void ASLLineSicilia::PutSummary(FixedLine& line, const FieldPlace& place, Field field) const {
    const bool detailed = TipoTracciato == ttM;
    switch (field) {
        case Field::Anno:
            if (!detailed) return format_.Place(line, place, std::int64_t{Anno});
            return format_.Place(line, place, text::Right(dataConvenzione_.View(), 4));
        case Field::NumeroASLStudio:
            if (!detailed) return format_.Place(line, place, numeroASLStudio_);
            return format_.Place(line, place, text::Right(codiceAzienda_.View(), 3));
        case Field::CodiceStruttura:
            if (!detailed) return format_.Place(line, place, CodiceStruttura);
            return format_.Place(line, place, codiceRegionale_);
        case Field::NumeroDocumento:
            return format_.Place(line, place, std::int64_t{numeroDocumento_});
        case Field::DistrettoASLStudio:
            return format_.Place(line, place, distrettoASLStudio_);
        case Field::CodiceBranca:
            return format_.Place(line, place, CodiceBranca);
        case Field::ImportoLordo:
            return format_.Place(line, place, ImportoLordo);
        case Field::Ticket:
            return format_.Place(line, place, Ticket);
        case Field::NumeroPrestazioni:
            return format_.Place(line, place, std::int64_t{NumeroPrestazioni});
        case Field::Mese:
            return format_.Place(line, place, std::int64_t{Mese});
        case Field::Trimestre:
            return format_.Place(line, place, std::int64_t{QuarterOfMonth(Mese)});
        case Field::IdentificativoRecord:
            return format_.Place(line, place, identificativoRecord_);
        case Field::CognomeENome:
            return format_.Place(line, place, NamesTogether(cognome_.Trimmed(), nome_.Trimmed()));
        case Field::SessoLettera:
            return format_.Place(line, place, std::string_view(sesso_ == 1 ? "M" : "F"));
        default:
            return;
    }
}

}  // namespace vlm
