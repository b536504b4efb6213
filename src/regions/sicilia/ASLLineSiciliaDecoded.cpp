// Reading written lines back and showing them: the other half of the record.

#include "ASLLineSicilia.h"
#include "frame/Messages.h"
#include "values/Number.h"

namespace vlm {

using sicilia::Field;
using sicilia::kLayoutM;
using sicilia::kLayoutS;

namespace {

enum Mode { kHeader = 1, kLine = 2, kLegend = 3 };

constexpr const char* kHeaderM1 =
    "USL     Br C.F. Utente      Cogn. e nome utente  Data pren.S Comune Numero Ricetta   P QTA  Ticket";
constexpr const char* kHeaderM2 =
    "Strutt.C.F. Medico      Identific. record    Data nasc C USL PU Data     Codice  Esenz. R   Tot./Rimb";
constexpr const char* kLegendM =
    "S=Sesso; C=Codice nomenclatore; Br=Codice branca; R=Riga; P=Posizione; PU=Posizione Utente; T=Trimestre";
constexpr const char* kHeaderS = "USL Ditretto Struttura Branca  Importo    Ticket    N. Prestaz. Mese Anno Trimestre";

std::string Rule(std::size_t length) { return std::string(length, '-') + messages::kLineEnd; }

template <Field field, std::size_t N>
std::int16_t NumberIn(std::string_view line, const std::array<sicilia::Row, N>& layout) {
    // These fields have at most four characters: what they hold fits.
    return static_cast<std::int16_t>(text::LeadingInteger(FieldOf<field>(line, layout)));
}

}  // namespace

std::string ASLLineSicilia::DecodedLine(std::string_view line, int mode) {
    if (TipoTracciato == ttM) return DecodedLineFlussoM(line, mode);
    if (TipoTracciato == ttS) return DecodedLineFlussoS(line, mode);
    return {};
}

std::string ASLLineSicilia::DecodedLineFlussoM(std::string_view line, int mode) {
    if (mode == kHeader) {
        return std::string(kHeaderM1) + messages::kLineEnd + kHeaderM2 + messages::kLineEnd +
               Rule(sicilia::kReportLengthM);
    }
    if (mode == kLegend) return Rule(18) + kLegendM;
    if (mode != kLine) return {};
    ParseLineFlussoM(line);
    std::string first;
    std::string second;
    Write(first, sicilia::kReportM1, sicilia::kReportLengthM);
    Write(second, sicilia::kReportM2, sicilia::kReportLengthM);
    return first + messages::kLineEnd + second;
}

std::string ASLLineSicilia::DecodedLineFlussoS(std::string_view line, int mode) {
    if (mode == kHeader) return std::string(kHeaderS) + messages::kLineEnd + Rule(83);
    if (mode != kLine) return {};
    ParseLineFlussoS(line);
    std::string shown;
    Write(shown, sicilia::kReportS, sicilia::kReportLengthS);
    return shown;
}

void ASLLineSicilia::ParseLineFlussoM(std::string_view line) {
    codiceAzienda_ = FieldOf<Field::CodiceAzienda>(line, kLayoutM);
    codiceRegionale_ = text::Trim(FieldOf<Field::CodiceRegionale>(line, kLayoutM));
    brancaSpecialistica_ = NumberIn<Field::BrancaSpecialistica>(line, kLayoutM);
    medicoPrescrittore_ = text::Trim(FieldOf<Field::MedicoPrescrittore>(line, kLayoutM));
    cognome_ = text::Trim(FieldOf<Field::Cognome>(line, kLayoutM));
    nome_ = text::Trim(FieldOf<Field::Nome>(line, kLayoutM));
    codiceFiscale_ = text::Trim(FieldOf<Field::CodiceFiscale>(line, kLayoutM));
    sesso_ = NumberIn<Field::Sesso>(line, kLayoutM);
    dataNascita_ = FieldOf<Field::DataNascita>(line, kLayoutM);
    comuneISTAT_ = static_cast<std::int32_t>(text::LeadingInteger(FieldOf<Field::ComuneISTAT>(line, kLayoutM)));
    aslResidenza_ = text::Trim(FieldOf<Field::ASLResidenza>(line, kLayoutM));
    dataPrenotazione_ = text::Trim(FieldOf<Field::DataPrenotazione>(line, kLayoutM));
    numeroRicetta_ = text::Trim(FieldOf<Field::NumeroRicetta>(line, kLayoutM));
    progressivoRicetta_ = NumberIn<Field::ProgressivoRicetta>(line, kLayoutM);
    riservato_ = FieldOf<Field::Riservato>(line, kLayoutM);
    dataConvenzione_ = FieldOf<Field::DataConvenzione>(line, kLayoutM);
    codiceNomenclatore_ = FieldOf<Field::CodiceNomenclatore>(line, kLayoutM);
    codicePrestazione_ = text::Trim(FieldOf<Field::CodicePrestazione>(line, kLayoutM));
    quantita_ = NumberIn<Field::Quantita>(line, kLayoutM);
    posizioneUtente_ = text::Trim(FieldOf<Field::PosizioneUtente>(line, kLayoutM));
    esenzione_ = FieldOf<Field::Esenzione>(line, kLayoutM);
    ticketRicetta_ = format_.ParseAmount(FieldOf<Field::TicketRicetta>(line, kLayoutM));
    importoPrestazione_ = format_.ParseAmount(FieldOf<Field::ImportoPrestazione>(line, kLayoutM));
    posizioneContabile_ = FieldOf<Field::PosizioneContabile>(line, kLayoutM);
    identificativoRecord_ = text::Mid(line, sicilia::kIdentifierPosition, sicilia::kIdentifierLength);
}

void ASLLineSicilia::ParseLineFlussoS(std::string_view line) {
    numeroASLStudio_ = FieldOf<Field::NumeroASLStudio>(line, kLayoutS);
    distrettoASLStudio_ = FieldOf<Field::DistrettoASLStudio>(line, kLayoutS);
    CodiceStruttura = FieldOf<Field::CodiceStruttura>(line, kLayoutS);
    CodiceBranca = FieldOf<Field::CodiceBranca>(line, kLayoutS);
    ImportoLordo = format_.ParseAmount(FieldOf<Field::ImportoLordo>(line, kLayoutS));
    Ticket = format_.ParseAmount(FieldOf<Field::Ticket>(line, kLayoutS));
    NumeroPrestazioni =
        static_cast<std::int32_t>(text::LeadingInteger(FieldOf<Field::NumeroPrestazioni>(line, kLayoutS)));
    Mese = NumberIn<Field::Mese>(line, kLayoutS);
    Anno = NumberIn<Field::Anno>(line, kLayoutS);
}

}  // namespace vlm
