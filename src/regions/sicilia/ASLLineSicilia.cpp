#include "ASLLineSicilia.h"

#include "SiciliaChecks.h"
#include "frame/Messages.h"
#include "frame/ModGeneral.h"

namespace vlm {

using sicilia::kLayoutM;
using sicilia::kLayoutS;

namespace sicilia {

std::int16_t Trimestre(const Record& record) { return QuarterOfMonth(record.Mese); }

std::string CognomeENome(const Record& record) {
    std::string names(record.Cognome.Trimmed());
    return std::string(text::Trim(names.append(" ").append(record.Nome.Trimmed())));
}

}  // namespace sicilia

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

}  // namespace

int ASLLineSicilia::LineLenght() const noexcept {
    return TipoTracciato == ttM ? kLayoutM.length : TipoTracciato == ttS ? kLayoutS.length : 0;
}

void ASLLineSicilia::SetProgressivoRicetta(std::int16_t value) {
    record_.ProgressivoRicetta = value;
    if (value == 0) record_.TotaleRicetta = Currency{};
}

void ASLLineSicilia::SetRs(data::Recordset* rs) {
    rs_ = rs;
    columns_.reset();
    if (rs != nullptr && TipoTracciato == ttM) columns_.emplace(*rs);
}

void ASLLineSicilia::ReadData() {
    if (!columns_) return;
    columns_->Read(record_, *rs_);
    record_.CodiceNomenclatore = "x";
    record_.ProgressivoRicetta = text::ToInt16(record_.ProgressivoRicetta + 1, "ProgressivoRicetta");
    record_.TotaleRicetta += record_.ImportoPrestazione;
}

std::string ASLLineSicilia::GetErrors() const {
    return TipoTracciato == ttM ? sicilia::Anomalies(record_) : std::string{};
}

const std::string& ASLLineSicilia::GetFormattedLine() {
    if (TipoTracciato == ttM) {
        WriteLine<kLayoutM>(line_, record_);
    } else if (TipoTracciato == ttS) {
        WriteLine<kLayoutS>(line_, record_);
    } else {
        line_.clear();
    }
    return line_;
}

std::string ASLLineSicilia::DecodedLine(std::string_view line, int mode) {
    if (TipoTracciato == ttM) return DecodedLineFlussoM(line, mode);
    if (TipoTracciato == ttS) return DecodedLineFlussoS(line, mode);
    return {};
}

std::string ASLLineSicilia::DecodedLineFlussoM(std::string_view line, int mode) {
    if (mode == kHeader) {
        return std::string(kHeaderM1) + messages::kLineEnd + kHeaderM2 + messages::kLineEnd +
               Rule(sicilia::kReportM1.length);
    }
    if (mode == kLegend) return Rule(18) + kLegendM;
    if (mode != kLine) return {};
    ParseLine<kLayoutM>(line, record_);
    record_.IdentificativoRecord = FieldAt(line, sicilia::kIdentifier);
    std::string first;
    std::string second;
    WriteLine<sicilia::kReportM1>(first, record_);
    WriteLine<sicilia::kReportM2>(second, record_);
    return first + messages::kLineEnd + second;
}

std::string ASLLineSicilia::DecodedLineFlussoS(std::string_view line, int mode) {
    if (mode == kHeader) return std::string(kHeaderS) + messages::kLineEnd + Rule(83);
    if (mode != kLine) return {};
    ParseLine<kLayoutS>(line, record_);
    std::string shown;
    WriteLine<sicilia::kReportS>(shown, record_);
    return shown;
}

}  // namespace vlm
