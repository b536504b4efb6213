#pragma once

#include <memory>
#include <tuple>
#include <vector>

#include "database/MemoryRecordset.h"

namespace vlm::test {

/// One prescription as the host's procedure gives it, every cell with a value of its own.
inline std::unique_ptr<data::MemoryRecordset> PrescriptionRow() {
    using data::FieldType;
    const std::vector<std::tuple<const char*, FieldType, data::Value>> cells = {
        {"CodiceRegionale", FieldType::Text, "190105"},
        {"PAZ_CodiceFiscale", FieldType::Text, "NCLMGR70E41G273K"},
        {"DataRicetta", FieldType::Date, *Date::FromYmd(2011, 3, 15)},
        {"CodiceAIC_1", FieldType::Text, "0239930131"},
        {"IDPatologia_1", FieldType::Integer, std::int64_t{1}},
        {"IDTipoRichiesta", FieldType::Integer, std::int64_t{3}},
        {"Quantita_1", FieldType::Integer, std::int64_t{2}},
        {"CodiceAIC_2", FieldType::Text, "028519015"},
        {"IDPatologia_2", FieldType::Integer, std::int64_t{2}},
        {"Quantita_2", FieldType::Integer, std::int64_t{12}},
        {"PrescrivibileSSN", FieldType::Boolean, true}};
    auto row = std::make_unique<data::MemoryRecordset>();
    for (const auto& [name, type, value] : cells) row->AppendColumn(name, type);
    row->Open();
    row->AddNew();
    for (const auto& [name, type, value] : cells) row->SetValue(name, value);
    row->Update();
    return row;
}

}  // namespace vlm::test
