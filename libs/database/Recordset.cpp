#include "database/Recordset.h"

#include "database/UpdatableRecordset.h"
#include "values/Error.h"
#include "values/Number.h"
#include "values/Utf8.h"

namespace vlm::data {

int Recordset::FindField(std::string_view name) const {
    const int count = FieldCount();
    for (int ordinal = 0; ordinal < count; ++ordinal) {
        if (text::EqualNoCase(FieldName(ordinal), name)) return ordinal;
    }
    return -1;
}

int Recordset::Ordinal(std::string_view name) const {
    const int ordinal = FindField(name);
    if (ordinal < 0) throw Error("La colonna " + std::string(name) + " non esiste nelle righe lette.");
    return ordinal;
}

std::int16_t Recordset::Int16Of(int ordinal) const { return text::ToInt16(NumberOf(ordinal), FieldName(ordinal)); }

std::int32_t Recordset::Int32Of(int ordinal) const { return text::ToInt32(NumberOf(ordinal), FieldName(ordinal)); }

std::optional<Date::Civil> Recordset::CivilOf(int ordinal) const {
    const std::optional<Date> date = DateOf(ordinal);
    return date ? std::optional(date->ToCivil()) : std::nullopt;
}

int ForwardingRecordset::Checked(int ordinal) const {
    if (ordinal >= 0 && ordinal < FieldCount()) return ordinal;
    throw Error("La colonna numero " + std::to_string(ordinal) + " non esiste nelle righe lette.");
}

}  // namespace vlm::data
