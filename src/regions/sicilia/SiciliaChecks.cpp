#include "SiciliaChecks.h"

#include "export/RegionRun.h"
#include "frame/Messages.h"
#include "values/Number.h"

namespace vlm::sicilia {

namespace {

struct Check {
    const char* message;
    bool (*fires)(const Record& record);
};

// The numbers are the region's; they are not consecutive.
constexpr Check kChecks[] = {
    {"[1] Codice Azienda ASL mancante",
     [](const Record& r) { return text::Trim(text::Right(r.CodiceAzienda.View(), 3)).empty(); }},
    {"[2] Codice struttura erogatrice mancante", [](const Record& r) { return r.CodiceRegionale.IsEmpty(); }},
    {"[3] Codice branca specialiastica mancante", [](const Record& r) { return r.BrancaSpecialistica == 0; }},
    {"[4] Codice fiscale del medico prescrittore mancante",
     [](const Record& r) { return r.MedicoPrescrittore.IsEmpty(); }},
    {"[7] Identificativo dell'utente mancante",
     [](const Record& r) {
         return r.IDConsenso == kConsensoNominativo && r.CodiceFiscale.IsEmpty() &&
                (r.DataNascita.IsEmpty() || r.Nome.IsEmpty() || r.Cognome.IsEmpty());
     }},
    {"[7] Codice fiscale dell'utente mancante",
     [](const Record& r) { return r.IDConsenso != kConsensoNominativo && r.CodiceFiscale.IsEmpty(); }},
    {"[8] Sesso dell'utente mancante", [](const Record& r) { return r.Sesso == 0; }},
    {"[10] Comune di residenza o codice ISTAT mancante", [](const Record& r) { return r.ComuneISTAT == 0; }},
    {"[11] ASL di residenza mancante", [](const Record& r) { return r.ASLResidenza.IsEmpty(); }},
    {"[12] Numero ricetta mancante", [](const Record& r) { return r.NumeroRicetta.IsEmpty(); }},
    {"[14] Data convenzione mancante", [](const Record& r) { return r.DataConvenzione.IsEmpty(); }},
    {"[16] Codice prestazione mancante", [](const Record& r) { return r.CodicePrestazione.IsEmpty(); }},
    {"[18] Posizione utente mancante",
     [](const Record& r) { return text::ParseNumber(r.PosizioneUtente.Trimmed()).value_or(0) == 0; }},
};

}  // namespace

std::string Anomalies(const Record& record) {
    std::string found;
    for (const Check& check : kChecks) {
        if (!check.fires(record)) continue;
        found += DocumentLabel(record.IDTipoDocumento, record.PrefissoNumerazione, record.NumeroDocumento,
                               Date::FromCivil(record.DataDocumento).value_or(Date{}));
        found += check.message;
        found += messages::kLineEnd;
    }
    return found;
}

}  // namespace vlm::sicilia
