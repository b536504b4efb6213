#include "PugliaChecks.h"

#include <utility>

#include "ASLLInePuglia.h"
#include "frame/Messages.h"
#include "values/Utf8.h"

namespace vlm {

namespace {

/// "ddmmyyyy" so that the text orders as the date does.
std::string YearFirst(std::string_view field) {
    return std::string(text::Right(field, 4)).append(text::Mid(field, 3, 2)).append(text::Left(field, 2));
}

}  // namespace

struct PugliaChecks::DocumentCheck {
    const char* message;
    bool (*fires)(const ASLLInePuglia& record);
};

/// In the message, "%1" stands for the start of the cycle and "%2" for the dispatch date.
struct PugliaChecks::ServiceCheck {
    bool cyclic;
    const char* message;
    bool (*fires)(const ASLLInePuglia& record);
};

constexpr PugliaChecks::DocumentCheck PugliaChecks::kDocumentChecks[] = {
    {"Data spedizione ricetta mancante", [](const ASLLInePuglia& r) { return r.ricetta_.DataSpedizione.empty(); }},
    {"Data refertazione mancante", [](const ASLLInePuglia& r) { return r.ricetta_.DataRefertazione.empty(); }},
};

constexpr PugliaChecks::ServiceCheck PugliaChecks::kServiceChecks[] = {
    {true, "Data di inizio ciclo mancante", [](const ASLLInePuglia& r) { return r.ricetta_.DataInizioCiclo.empty(); }},
    {true, "Data di inizio ciclo %1 incongruente con la data di spedizione %2",
     [](const ASLLInePuglia& r) {
         return !r.ricetta_.DataInizioCiclo.empty() && !r.ricetta_.DataSpedizione.empty() &&
                YearFirst(r.ricetta_.DataInizioCiclo) >= YearFirst(r.ricetta_.DataSpedizione);
     }},
    {false, "Data di inizio ciclo valorizzata per una prestazione NON ciclica",
     [](const ASLLInePuglia& r) { return !r.ricetta_.DataInizioCiclo.empty(); }},
    {false, "Data di refertazione incongruente con data di spedizione",
     [](const ASLLInePuglia& r) { return r.ricetta_.DataSpedizione != r.ricetta_.DataRefertazione; }},
    {false, "Data assegnata incongruente con data di spedizione",
     [](const ASLLInePuglia& r) { return r.ricetta_.DataSpedizione != r.dataAssegnata_; }},
};

std::string PugliaChecks::Run(const ASLLInePuglia& record) {
    std::string found;
    const auto report = [&](const std::string& prefix, std::string message) {
        for (const auto& [mark, date] :
             {std::pair{"%1", &record.ricetta_.DataInizioCiclo}, std::pair{"%2", &record.ricetta_.DataSpedizione}}) {
            const std::size_t at = message.find(mark);
            if (at != std::string::npos) message.replace(at, 2, record.format_.DisplayDate(*date));
        }
        found.append(record.Label()).append(prefix).append(message).append(messages::kLineEnd);
    };
    for (const DocumentCheck& check : kDocumentChecks) {
        if (check.fires(record)) report("", check.message);
    }
    int number = 0;
    for (const puglia::Prestazione& slot : record.ricetta_.Prestazioni) {
        ++number;
        if (slot.Codice.empty()) continue;
        for (const ServiceCheck& check : kServiceChecks) {
            if (check.cyclic == slot.Ciclica && check.fires(record)) {
                report(" - Prestazione " + std::to_string(number) + ": ", check.message);
            }
        }
    }
    return found;
}

}  // namespace vlm
