#pragma once

#include <string_view>

namespace vlm::puglia {

/// A prescription's priority class: the host's number, the region's letter, the word that is shown.
struct Priorita {
    int id;
    std::string_view codice;
    std::string_view descrizione;
};

inline constexpr Priorita kPriorita[] = {
    {1, "U", "Urgente"},
    {2, "B", "Breve"},
    {3, "D", "Differita"},
    {4, "P", "Programmata"},
};

/// The letter of a number; "" for any other number.
constexpr std::string_view PrioritaCodice(double id) {
    for (const Priorita& one : kPriorita) {
        if (one.id == id) return one.codice;
    }
    return {};
}

/// The word of a letter; "" for any other letter.
constexpr std::string_view PrioritaDescrizione(std::string_view codice) {
    for (const Priorita& one : kPriorita) {
        if (one.codice == codice) return one.descrizione;
    }
    return {};
}

}  // namespace vlm::puglia
