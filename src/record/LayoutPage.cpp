#include "record/LayoutPage.h"

namespace vlm {

namespace {

const char* NameOf(FieldRule rule) {
    switch (rule) {
        case FieldRule::Blank:
            return "spazi";
        case FieldRule::Number:
            return "numero";
        case FieldRule::Text:
            return "testo";
        case FieldRule::RightText:
            return "testo a destra";
        case FieldRule::Date:
            return "data";
        case FieldRule::Amount:
            return "importo";
        case FieldRule::ShownDate:
            return "data leggibile";
        case FieldRule::ShownAmount:
            return "importo leggibile";
    }
    return "";
}

}  // namespace

std::string LayoutPage(const std::string& title, const std::string& introduction, int length,
                       const std::vector<FieldDescription>& fields) {
    std::string page = "# " + title + "\n\n" + introduction + "\n\nLunghezza: " + std::to_string(length) +
                       " caratteri, più ritorno a capo e avanzamento riga. Posizioni contate da 1.\n\n"
                       "Regole: un numero ha zeri a sinistra, e di uno più lungo restano i caratteri più a destra; un "
                       "testo ha spazi a destra (a sinistra, se allineato a destra), e di uno più lungo restano i "
                       "caratteri più a sinistra; una data è ggmmaaaa; un importo ha zeri a sinistra.\n\n"
                       "| da | a | lunghezza | contenuto | regola | colonne | nota |\n|--:|--:|--:|---|---|---|---|\n";
    for (const FieldDescription& field : fields) {
        const FieldPlace& place = field.place;
        page += "| " + std::to_string(place.position) + " | " + std::to_string(place.position + place.length - 1) +
                " | " + std::to_string(place.length) + " | " + field.name + " | " + NameOf(place.rule) + " | " +
                field.columns + " | " + field.note + " |\n";
    }
    return page;
}

}  // namespace vlm
