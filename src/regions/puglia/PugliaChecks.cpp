#include "PugliaChecks.h"

#include <utility>

#include "PugliaColumns.h"
#include "frame/Messages.h"
#include "values/Utf8.h"

namespace vlm::puglia {

namespace {

/// "ddmmyyyy" so that the text orders as the date does.
std::string YearFirst(std::string_view field) {
    return std::string(text::Right(field, 4)).append(text::Mid(field, 3, 2)).append(text::Left(field, 2));
}

struct DocumentCheck {
    const char* message;
    bool (*fires)(const Ricetta& ricetta);
};

/// In the message, "%1" stands for the start of the cycle and "%2" for the dispatch date.
struct ServiceCheck {
    bool cyclic;
    const char* message;
    bool (*fires)(const Ricetta& ricetta);
};

constexpr DocumentCheck kDocumentChecks[] = {
    {"Data spedizione ricetta mancante", [](const Ricetta& r) { return r.DataSpedizione.empty(); }},
    {"Data refertazione mancante", [](const Ricetta& r) { return r.DataRefertazione.empty(); }},
};

constexpr ServiceCheck kServiceChecks[] = {
    {true, "Data di inizio ciclo mancante", [](const Ricetta& r) { return r.DataInizioCiclo.empty(); }},
    {true, "Data di inizio ciclo %1 incongruente con la data di spedizione %2",
     [](const Ricetta& r) {
         return !r.DataInizioCiclo.empty() && !r.DataSpedizione.empty() &&
                YearFirst(r.DataInizioCiclo) >= YearFirst(r.DataSpedizione);
     }},
    {false, "Data di inizio ciclo valorizzata per una prestazione NON ciclica",
     [](const Ricetta& r) { return !r.DataInizioCiclo.empty(); }},
    {false, "Data di refertazione incongruente con data di spedizione",
     [](const Ricetta& r) { return r.DataSpedizione != r.DataRefertazione; }},
    {false, "Data assegnata incongruente con data di spedizione",
     [](const Ricetta& r) { return r.DataSpedizione != r.DataAssegnata; }},
};

}  // namespace

std::string Anomalies(const Ricetta& ricetta) {
    std::string found;
    const auto report = [&](const std::string& prefix, std::string message) {
        for (const auto& [mark, date] :
             {std::pair{"%1", &ricetta.DataInizioCiclo}, std::pair{"%2", &ricetta.DataSpedizione}}) {
            const std::size_t at = message.find(mark);
            if (at != std::string::npos) message.replace(at, 2, kLayout.format.DisplayDate(*date));
        }
        found.append(LabelOf(ricetta)).append(prefix).append(message).append(messages::kLineEnd);
    };
    for (const DocumentCheck& check : kDocumentChecks) {
        if (check.fires(ricetta)) report("", check.message);
    }
    int number = 0;
    for (const Prestazione& slot : ricetta.Prestazioni) {
        ++number;
        if (slot.Codice.empty()) continue;
        for (const ServiceCheck& check : kServiceChecks) {
            if (check.cyclic == slot.Ciclica && check.fires(ricetta)) {
                report(" - Prestazione " + std::to_string(number) + ": ", check.message);
            }
        }
    }
    return found;
}

}  // namespace vlm::puglia
