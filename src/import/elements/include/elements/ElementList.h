#pragma once

#include <array>
#include <memory>

#include "database/MemoryRecordset.h"

/// The patient list that every source is read into: a disconnected row set with fixed columns.
namespace vlm {

/// The columns in their order; their values are the ordinals.
enum class ElementColumn : int {
    Selezionato,
    Codice,
    Cognome,
    Nome,
    DataNascita,
    Sesso,
    CodiceFiscale,
    Comune,
    Indirizzo,
    CAP,
    DataScelta,
    IDComune,
    IDPaziente,
    Scadenza,
    Sospensione,
    Telefono,
    Esenzione,
    EsenzioneDataInizio,
    EsenzioneDataScadenza
};

struct ElementColumnFacts {
    const char* name;
    data::FieldType type;
    bool nullable;
};

/// By ordinal. Only `Selezionato` takes no Null.
inline constexpr std::array<ElementColumnFacts, 19> kElementColumns = {{
    {"Selezionato", data::FieldType::Boolean, false},
    {"Codice", data::FieldType::Text, true},
    {"Cognome", data::FieldType::Text, true},
    {"Nome", data::FieldType::Text, true},
    {"DataNascita", data::FieldType::Date, true},
    {"Sesso", data::FieldType::Text, true},
    {"CodiceFiscale", data::FieldType::Text, true},
    {"Comune", data::FieldType::Text, true},
    {"Indirizzo", data::FieldType::Text, true},
    {"CAP", data::FieldType::Text, true},
    {"DataScelta", data::FieldType::Date, true},
    {"IDComune", data::FieldType::BigInt, true},
    {"IDPaziente", data::FieldType::BigInt, true},
    {"Scadenza", data::FieldType::Date, true},
    {"Sospensione", data::FieldType::Date, true},
    {"Telefono", data::FieldType::Text, true},
    {"Esenzione", data::FieldType::Text, true},
    {"EsenzioneDataInizio", data::FieldType::Date, true},
    {"EsenzioneDataScadenza", data::FieldType::Date, true},
}};

constexpr int OrdinalOf(ElementColumn column) { return static_cast<int>(column); }
constexpr const ElementColumnFacts& FactsOf(ElementColumn column) {
    return kElementColumns[static_cast<std::size_t>(OrdinalOf(column))];
}
constexpr const char* NameOf(ElementColumn column) { return FactsOf(column).name; }
constexpr bool IsDate(ElementColumn column) { return FactsOf(column).type == data::FieldType::Date; }

using ElementList = data::MemoryRecordset;
using ElementListPtr = std::unique_ptr<ElementList>;

/// Appends the columns to a row set that is not open.
inline void InitDataStructure(data::MemoryRecordset& data) {
    for (const auto& column : kElementColumns) data.AppendColumn(column.name, column.type, column.nullable);
}
/// With the columns, open and empty.
inline ElementListPtr NewElementList() {
    auto elements = std::make_unique<ElementList>();
    InitDataStructure(*elements);
    elements->Open();
    return elements;
}

}  // namespace vlm
