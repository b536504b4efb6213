#include "FieldsObject.h"

#include "ado/AdoTypes.h"
#include "automation/ErrorReport.h"
#include "values/Error.h"

namespace vlm::data::ado {

namespace {

template <typename Body>
HRESULT Guarded(Body&& body) {
    return com::Guarded(kErrorSource, kRecordsetId, std::forward<Body>(body));
}

}  // namespace

com::Ref<FieldObject> FieldAt(const com::Ref<RecordsetObject>& rows, const VARIANT& index) {
    const Recordset& columns = rows->Native();
    const Value value = com::ToValue(index);
    const std::string shown = TextOf(value);
    int ordinal = -1;
    if (std::holds_alternative<std::string>(value)) {
        ordinal = columns.FindField(shown);
    } else {
        const double number = NumberOf(value);
        if (number >= 0 && number < columns.FieldCount()) ordinal = static_cast<int>(number);
    }
    if (ordinal < 0) throw Error("La colonna " + shown + " non esiste nell'insieme di righe.", kItemNotFound);
    return com::Make<FieldObject>(rows, ordinal);
}

std::span<const com::Member> FieldsObject::Members() const noexcept {
    using Self = FieldsObject;
    static constexpr std::array kMembers = {
        com::Get<&Self::Item>("Item", DISPID_VALUE, VT_DISPATCH, {{"Index"}}),
        com::Get<&Self::Count>("Count", 1, VT_I4),
        com::Method<&Self::Append>("Append", 2, VT_EMPTY,
                                   {{"Name", VT_BSTR},
                                    {"Type", VT_I4},
                                    {"DefinedSize", VT_I4, true},
                                    {"Attrib", VT_I4, true, kFieldUnspecified}}),
    };
    return kMembers;
}

HRESULT FieldsObject::Item(const VARIANT& index, IDispatch** field) {
    return Guarded([&] { *field = FieldAt(rows_, index).Detach(); });
}

HRESULT FieldsObject::Count(std::int32_t* count) {
    return Guarded([&] { *count = rows_->Native().FieldCount(); });
}

HRESULT FieldsObject::Append(BSTR name, std::int32_t type, std::int32_t, std::int32_t attributes) {
    return Guarded([&] {
        const bool nullable = attributes != kFieldUnspecified && (attributes & kFieldNullable) != 0;
        rows_->Memory().AppendColumn(com::ToUtf8(name), FieldTypeOf(type), nullable);
    });
}

std::span<const com::Member> FieldObject::Members() const noexcept {
    using Self = FieldObject;
    static constexpr std::array kMembers = {
        com::Get<&Self::GetValue>("Value", DISPID_VALUE, VT_VARIANT),
        com::Put<&Self::PutValue>("Value", DISPID_VALUE, VT_VARIANT),
        com::Get<&Self::Name>("Name", 1, VT_BSTR),
        com::Get<&Self::Type>("Type", 2, VT_I4),
    };
    return kMembers;
}

HRESULT FieldObject::GetValue(VARIANT* value) {
    return Guarded([&] {
        const Recordset& rows = rows_->Native();
        *value = com::FromValue(rows.ValueOf(ordinal_), rows.TypeOf(ordinal_)).Detach();
    });
}

HRESULT FieldObject::PutValue(const VARIANT& value) {
    return Guarded([&] { rows_->SetValue(ordinal_, com::ToValue(value)); });
}

HRESULT FieldObject::Name(BSTR* name) {
    return Guarded([&] { *name = com::Bstr(rows_->Native().FieldName(ordinal_)).Detach(); });
}

HRESULT FieldObject::Type(std::int32_t* type) {
    return Guarded([&] { *type = AdoTypeOf(rows_->Native().TypeOf(ordinal_)); });
}

}  // namespace vlm::data::ado
