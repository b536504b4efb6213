#include "ado/HostRecordset.h"

#include "ado/AdoTypes.h"
#include "values/ColumnConversion.h"
#include "values/Error.h"

namespace vlm::data::ado {

namespace {

std::int32_t WholeOf(const com::LateBound& object, std::string_view member) {
    return static_cast<std::int32_t>(NumberOf(object.Get(member).Value()));
}

}  // namespace

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

com::LateBound HostRecordset::Field(int ordinal) const {
    com::LateBound field(rows_.ObjectOf("Fields").Item(com::Variant(ordinal)).Object());
    if (!field) throw Error("La colonna richiesta non esiste.", kItemNotFound);
    return field;
}

int HostRecordset::FieldCount() const { return WholeOf(rows_.ObjectOf("Fields"), "Count"); }

std::string_view HostRecordset::FieldName(int ordinal) const {
    const auto at = static_cast<std::size_t>(ordinal);
    std::string name = Field(ordinal).Get("Name").Text();
    if (names_.size() <= at) names_.resize(at + 1);
    if (names_[at] != name) names_[at] = std::move(name);  // a name handed out before stays where it is
    return names_[at];
}

FieldType HostRecordset::TypeOf(int ordinal) const { return FieldTypeOf(WholeOf(Field(ordinal), "Type")); }

bool HostRecordset::IsOpen() const { return (WholeOf(rows_, "State") & kStateOpen) != 0; }

bool HostRecordset::AtEnd() const { return WholeOf(rows_, "EOF") != 0; }

const VARIANT& HostRecordset::Cell(int ordinal) const {
    cell_ = Field(ordinal).Get("Value");
    return cell_.Get();
}

RecordsetReference::RecordsetReference(IDispatch* object) {
    native_ = com::Query<INativeRecordset>(object);
    if (!native_ && !com::Query<IUnknown>(object, kRecordsetId)) return;
    object_ = com::Ref<IDispatch>(object);
    if (!native_) foreign_ = std::make_unique<HostRecordset>(object_);
}

}  // namespace vlm::data::ado
