#include "export/RowReads.h"

#include "values/DateText.h"
#include "values/Number.h"

namespace vlm {

std::string DateFieldOf(const data::Recordset& rows, int column) {
    const std::optional<Date::Civil> date = rows.CivilOf(column);
    return date ? text::DdMmYyyy(*date) : std::string{};
}

std::int32_t KeyOf(const data::Recordset& rows, int column) {
    return text::ToInt32(static_cast<double>(rows.IntegerOf(column)), rows.FieldName(column));
}

}  // namespace vlm
