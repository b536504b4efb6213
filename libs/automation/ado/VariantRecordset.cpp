#include "ado/VariantRecordset.h"

#include "values/ColumnConversion.h"

namespace vlm::data::ado {

bool VariantRecordset::IsNull(int ordinal) const {
    const VARIANT& cell = Cell(ordinal);
    return cell.vt == VT_NULL || cell.vt == VT_EMPTY;
}

std::string_view VariantRecordset::TextOf(int ordinal) const {
    const VARIANT& cell = Cell(ordinal);
    const auto at = static_cast<std::size_t>(ordinal);
    if (texts_.size() <= at) texts_.resize(at + 1);
    std::string& text = texts_[at];
    text.clear();
    if (cell.vt == VT_BSTR) {
        com::AppendUtf8(com::WideView(cell.bstrVal, SysStringLen(cell.bstrVal)), text);
    } else {
        text = data::TextOf(com::ToValue(cell));
    }
    return text;
}

double VariantRecordset::NumberOf(int ordinal) const { return data::NumberOf(ValueOf(ordinal)); }

std::int64_t VariantRecordset::IntegerOf(int ordinal) const {
    return ColumnInteger(ValueOf(ordinal), FieldName(ordinal));
}

Currency VariantRecordset::AmountOf(int ordinal) const { return data::AmountOf(ValueOf(ordinal), FieldName(ordinal)); }

std::optional<Date> VariantRecordset::DateOf(int ordinal) const {
    return data::DateOf(ValueOf(ordinal), FieldName(ordinal));
}

Value VariantRecordset::ValueOf(int ordinal) const { return com::ToValue(Cell(ordinal)); }

}  // namespace vlm::data::ado
