#pragma once

#include <vector>

#include "ElementGridModel.h"

/// What the import dialog's grids of elements show.
namespace vlm {

using ShownColumns = std::vector<ElementGridModel::ShownColumn>;

/// What both show first, up to the fiscal code, then `rest`.
inline ShownColumns PersonAnd(ShownColumns rest) {
    ShownColumns columns = {
        {ElementColumn::Selezionato, "Importa", 60},
        {ElementColumn::Codice, "Codice paziente", 110},
        {ElementColumn::Cognome, "Cognome", 130},
        {ElementColumn::Nome, "Nome", 130},
        {ElementColumn::DataNascita, "Data nascita", 90},
        {ElementColumn::Sesso, "Sesso", 50},
        {ElementColumn::CodiceFiscale, "Codice fiscale", 150},
    };
    columns.insert(columns.end(), rest.begin(), rest.end());
    return columns;
}

inline const ShownColumns kPatientColumns = PersonAnd({
    {ElementColumn::DataScelta, "Data scelta", 90},
    {ElementColumn::Comune, "Comune di residenza", 150},
    {ElementColumn::Indirizzo, "Indirizzo", 180},
    {ElementColumn::IDComune, "IDComune", 80, false},
    {ElementColumn::IDPaziente, "IDPaziente", 80, false},
    {ElementColumn::Scadenza, "Scadenza", 90},
    {ElementColumn::Sospensione, "Sospensione", 90},
    {ElementColumn::Telefono, "Telefono", 100},
});

inline const ShownColumns kExemptionColumns = PersonAnd({
    {ElementColumn::Esenzione, "Esenzione", 80},
    {ElementColumn::IDPaziente, "IDPaziente", 80, false},
    {ElementColumn::EsenzioneDataInizio, "Data inizio", 90},
    {ElementColumn::EsenzioneDataScadenza, "Data scadenza", 90},
});

}  // namespace vlm
