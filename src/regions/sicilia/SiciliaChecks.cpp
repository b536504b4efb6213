#include "SiciliaChecks.h"

#include "ASLLineSicilia.h"
#include "export/DocumentLabel.h"
#include "frame/Messages.h"
#include "values/Number.h"

namespace vlm {

struct SiciliaChecks::Check {
    const char* message;
    bool (*fires)(const ASLLineSicilia& record);
};

// The numbers are the region's; they are not consecutive.
constexpr SiciliaChecks::Check SiciliaChecks::kChecks[] = {
    {"[1] Codice Azienda ASL mancante",
     [](const ASLLineSicilia& r) { return text::Trim(text::Right(r.codiceAzienda_.View(), 3)).empty(); }},
    {"[2] Codice struttura erogatrice mancante", [](const ASLLineSicilia& r) { return r.codiceRegionale_.IsEmpty(); }},
    {"[3] Codice branca specialiastica mancante", [](const ASLLineSicilia& r) { return r.brancaSpecialistica_ == 0; }},
    {"[4] Codice fiscale del medico prescrittore mancante",
     [](const ASLLineSicilia& r) { return r.medicoPrescrittore_.IsEmpty(); }},
    {"[7] Identificativo dell'utente mancante",
     [](const ASLLineSicilia& r) {
         return r.idConsenso_ == 2 && r.codiceFiscale_.IsEmpty() &&
                (r.dataNascita_.IsEmpty() || r.nome_.IsEmpty() || r.cognome_.IsEmpty());
     }},
    {"[7] Codice fiscale dell'utente mancante",
     [](const ASLLineSicilia& r) { return r.idConsenso_ != 2 && r.codiceFiscale_.IsEmpty(); }},
    {"[8] Sesso dell'utente mancante", [](const ASLLineSicilia& r) { return r.sesso_ == 0; }},
    {"[10] Comune di residenza o codice ISTAT mancante", [](const ASLLineSicilia& r) { return r.comuneISTAT_ == 0; }},
    {"[11] ASL di residenza mancante", [](const ASLLineSicilia& r) { return r.aslResidenza_.IsEmpty(); }},
    {"[12] Numero ricetta mancante", [](const ASLLineSicilia& r) { return r.numeroRicetta_.IsEmpty(); }},
    {"[14] Data convenzione mancante", [](const ASLLineSicilia& r) { return r.dataConvenzione_.IsEmpty(); }},
    {"[16] Codice prestazione mancante", [](const ASLLineSicilia& r) { return r.codicePrestazione_.IsEmpty(); }},
    {"[18] Posizione utente mancante",
     [](const ASLLineSicilia& r) { return text::ParseNumber(r.posizioneUtente_.Trimmed()).value_or(0) == 0; }},
};

std::string SiciliaChecks::Run(const ASLLineSicilia& record) {
    std::string found;
    for (const Check& check : kChecks) {
        if (!check.fires(record)) continue;
        found += DocumentLabel(record.idTipoDocumento_, record.prefissoNumerazione_, record.numeroDocumento_,
                               Date::FromCivil(record.dataDocumento_).value_or(Date{}));
        found += check.message;
        found += messages::kLineEnd;
    }
    return found;
}

}  // namespace vlm
