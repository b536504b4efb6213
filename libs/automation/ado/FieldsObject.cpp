#include "RowsObject.h"
#include "automation/Enumerator.h"

namespace vlm::data::ado {

namespace {

constexpr std::int32_t kUpdatable = 0x4, kFixed = 0x10;  // attributes of a column
constexpr std::uint8_t kNoDigits = 255;                  // of a column that is no number

std::intptr_t WidthOf(FieldType type) {
    switch (type) {
        case FieldType::Boolean:
        case FieldType::SmallInt:
            return 2;
        case FieldType::Integer:
            return 4;
        case FieldType::Text:
            return 0;
        default:
            return 8;
    }
}

std::uint8_t DigitsOf(FieldType type) {
    switch (type) {
        case FieldType::SmallInt:
            return 5;
        case FieldType::Integer:
            return 10;
        case FieldType::BigInt:
        case FieldType::Currency:
            return 19;
        case FieldType::Double:
            return 15;
        default:
            return kNoDigits;
    }
}

/// One column; its value is that of the row set's current row.
class FieldObject final : public AdoObject<IAdoField> {
public:
    FieldObject(com::Ref<RowsObject> rows, int ordinal) : rows_(std::move(rows)), ordinal_(ordinal) {}

    HRESULT STDMETHODCALLTYPE get_Properties(IDispatch** result) override {
        return Give(result, [] { return MakeNoProperties().Detach(); });
    }
    HRESULT STDMETHODCALLTYPE get_ActualSize(std::intptr_t* result) override {
        return Give(result, [&]() -> std::intptr_t {
            const Recordset& row = rows_->Row();
            if (row.IsNull(ordinal_)) return 0;
            if (Type() != FieldType::Text) return WidthOf(Type());
            return static_cast<std::intptr_t>(com::ToWide(row.TextOf(ordinal_)).size() * sizeof(OLECHAR));
        });
    }
    HRESULT STDMETHODCALLTYPE get_Attributes(std::int32_t* result) override {
        return Give(result, [&] {
            const MemoryRecordset* const memory = rows_->MemoryOrNull();
            const bool nullable = memory == nullptr || memory->IsNullable(ordinal_);
            return (nullable ? kFieldNullable : 0) | (rows_->CanWrite() ? kUpdatable : 0) |
                   (Type() == FieldType::Text ? 0 : kFixed);
        });
    }
    HRESULT STDMETHODCALLTYPE get_DefinedSize(std::intptr_t* result) override {
        return Give(result, [&] { return WidthOf(Type()); });
    }
    HRESULT STDMETHODCALLTYPE get_Name(BSTR* result) override {
        return Give(result, [&] { return com::Bstr(rows_->Native().FieldName(ordinal_)).Detach(); });
    }
    HRESULT STDMETHODCALLTYPE get_Type(std::int32_t* result) override {
        return Give(result, [&] { return AdoTypeOf(Type()); });
    }
    HRESULT STDMETHODCALLTYPE get_Value(VARIANT* result) override {
        return GiveValue(result, [&] { return com::FromValue(rows_->Row().ValueOf(ordinal_), Type()); });
    }
    HRESULT STDMETHODCALLTYPE put_Value(VARIANT value) override {
        return Do([&] { rows_->SetValue(ordinal_, com::ToValue(value)); });
    }
    HRESULT STDMETHODCALLTYPE get_Precision(std::uint8_t* result) override {
        return Give(result, [&] { return DigitsOf(Type()); });
    }
    HRESULT STDMETHODCALLTYPE get_NumericScale(std::uint8_t* result) override {
        return Give(result, [&] { return Type() == FieldType::Currency ? std::uint8_t{4} : kNoDigits; });
    }
    HRESULT STDMETHODCALLTYPE AppendChunk(VARIANT) override { return Refuse("AppendChunk"); }
    HRESULT STDMETHODCALLTYPE GetChunk(std::int32_t, VARIANT*) override { return Refuse("GetChunk"); }
    HRESULT STDMETHODCALLTYPE get_OriginalValue(VARIANT* result) override {
        return GiveValue(result, [&] {
            rows_->Row();
            return com::FromValue(rows_->Memory("OriginalValue").StoredValueOf(ordinal_), Type());
        });
    }
    HRESULT STDMETHODCALLTYPE get_UnderlyingValue(VARIANT*) override { return Refuse("UnderlyingValue"); }
    HRESULT STDMETHODCALLTYPE get_DataFormat(IUnknown** result) override {
        return Give(result, []() -> IUnknown* { return nullptr; });
    }
    HRESULT STDMETHODCALLTYPE putref_DataFormat(IUnknown*) override { return Refuse("DataFormat"); }
    HRESULT STDMETHODCALLTYPE put_Precision(std::uint8_t) override { return Refuse("Precision"); }
    HRESULT STDMETHODCALLTYPE put_NumericScale(std::uint8_t) override { return Refuse("NumericScale"); }
    HRESULT STDMETHODCALLTYPE put_Type(std::int32_t) override { return Refuse("Type"); }
    HRESULT STDMETHODCALLTYPE put_DefinedSize(std::intptr_t) override { return Refuse("DefinedSize"); }
    HRESULT STDMETHODCALLTYPE put_Attributes(std::int32_t) override { return Refuse("Attributes"); }
    HRESULT STDMETHODCALLTYPE get_Status(std::int32_t* result) override {
        return Give(result, [] { return 0; });
    }

private:
    std::span<const com::Member> Members() const noexcept override {
        using Self = FieldObject;
        using com::Get, com::Put;
        static constexpr std::array kMembers = {
            Get<&Self::get_Value>("Value", DISPID_VALUE, VT_VARIANT),
            Put<&Self::put_Value>("Value", DISPID_VALUE, VT_VARIANT),
            Get<&Self::get_Properties>("Properties", 0x1F4, VT_DISPATCH),
            Get<&Self::get_Attributes>("Attributes", 0x40C, VT_I4),
            Get<&Self::get_Name>("Name", 0x44C, VT_BSTR),
            Get<&Self::get_Type>("Type", 0x44E, VT_I4),
            Get<&Self::get_DefinedSize>("DefinedSize", 0x44F, kPointerWide),
            Get<&Self::get_OriginalValue>("OriginalValue", 0x450, VT_VARIANT),
            Get<&Self::get_UnderlyingValue>("UnderlyingValue", 0x451, VT_VARIANT),
            com::Method<&Self::AppendChunk>("AppendChunk", 0x453, VT_EMPTY, {{"Data"}}),
            com::Method<&Self::GetChunk>("GetChunk", 0x454, VT_VARIANT, {{"Length", VT_I4}}),
            Get<&Self::get_ActualSize>("ActualSize", 0x455, kPointerWide),
            Get<&Self::get_Status>("Status", 0x45C, VT_I4),
            Get<&Self::get_Precision>("Precision", 0x60030007, VT_UI1),
            Get<&Self::get_NumericScale>("NumericScale", 0x60030008, VT_UI1),
            Get<&Self::get_DataFormat>("DataFormat", 0x6003000D, VT_UNKNOWN),
        };
        return kMembers;
    }
    FieldType Type() const { return rows_->Native().TypeOf(ordinal_); }

    com::Ref<RowsObject> rows_;
    int ordinal_;
};

com::Ref<IUnknown> Walk(std::vector<com::Variant> items) { return com::Make<com::VariantEnumerator>(std::move(items)); }

class FieldsObject final : public AdoObject<IAdoFields> {
public:
    explicit FieldsObject(com::Ref<RowsObject> rows) : rows_(std::move(rows)) {}

    HRESULT STDMETHODCALLTYPE get_Count(std::int32_t* result) override {
        return Give(result, [&] { return rows_->Native().FieldCount(); });
    }
    HRESULT STDMETHODCALLTYPE _NewEnum(IUnknown** result) override {
        return Give(result, [&] {
            std::vector<com::Variant> fields;
            for (int ordinal = 0; ordinal < rows_->Native().FieldCount(); ++ordinal) {
                fields.emplace_back(MakeField(rows_, ordinal).Get());
            }
            return Walk(std::move(fields)).Detach();
        });
    }
    HRESULT STDMETHODCALLTYPE Refresh() override { return S_OK; }
    HRESULT STDMETHODCALLTYPE get_Item(VARIANT index, IDispatch** result) override {
        return Give(result, [&] { return MakeField(rows_, rows_->OrdinalOf(index)).Detach(); });
    }
    HRESULT STDMETHODCALLTYPE _Append(BSTR name, std::int32_t type, std::intptr_t, std::int32_t attributes) override {
        return Do([&] {
            if (rows_->MemoryOrNull() == nullptr) ThrowUnsupported("Append");
            const bool nullable = attributes != kFieldUnspecified && (attributes & kFieldNullable) != 0;
            static_cast<MemoryRecordset&>(rows_->Native()).AppendColumn(com::ToUtf8(name), FieldTypeOf(type), nullable);
        });
    }
    HRESULT STDMETHODCALLTYPE Delete(VARIANT) override { return Refuse("Delete"); }
    HRESULT STDMETHODCALLTYPE Append(BSTR name, std::int32_t type, std::intptr_t size, std::int32_t attributes,
                                     VARIANT value) override {
        return NotGiven(value) ? _Append(name, type, size, attributes) : Refuse("Append");
    }
    HRESULT STDMETHODCALLTYPE Update() override { return Refuse("Update"); }
    HRESULT STDMETHODCALLTYPE Resync(std::int32_t) override { return Refuse("Resync"); }
    HRESULT STDMETHODCALLTYPE CancelUpdate() override { return Refuse("CancelUpdate"); }

private:
    std::span<const com::Member> Members() const noexcept override {
        using Self = FieldsObject;
        static constexpr std::array kMembers = {
            com::Get<&Self::get_Item>("Item", DISPID_VALUE, VT_DISPATCH, {{"Index"}}),
            com::Get<&Self::_NewEnum>("_NewEnum", DISPID_NEWENUM, VT_UNKNOWN),
            com::Get<&Self::get_Count>("Count", 0x60020000, VT_I4),
            com::Method<&Self::Refresh>("Refresh", 0x60020002),
            com::Method<&Self::Delete>("Delete", 0x60030002, VT_EMPTY, {{"Index"}}),
            com::Method<&Self::Append>("Append", 0x60040001, VT_EMPTY,
                                       {{"Name", VT_BSTR},
                                        {"Type", VT_I4},
                                        {"DefinedSize", kPointerWide, true},
                                        {"Attrib", VT_I4, true, kFieldUnspecified},
                                        {"FieldValue", VT_VARIANT, true}}),
        };
        return kMembers;
    }

    com::Ref<RowsObject> rows_;
};

class NoProperties final : public AdoObject<IAdoProperties> {
public:
    HRESULT STDMETHODCALLTYPE get_Count(std::int32_t* result) override {
        return Give(result, [] { return 0; });
    }
    HRESULT STDMETHODCALLTYPE _NewEnum(IUnknown** result) override {
        return Give(result, [] { return Walk({}).Detach(); });
    }
    HRESULT STDMETHODCALLTYPE Refresh() override { return S_OK; }
    HRESULT STDMETHODCALLTYPE get_Item(VARIANT index, IDispatch**) override {
        return Do([&] { throw Error("La proprietà " + TextOf(com::ToValue(index)) + " non esiste.", kItemNotFound); });
    }

private:
    std::span<const com::Member> Members() const noexcept override {
        using Self = NoProperties;
        static constexpr std::array kMembers = {
            com::Get<&Self::get_Item>("Item", DISPID_VALUE, VT_DISPATCH, {{"Index"}}),
            com::Get<&Self::_NewEnum>("_NewEnum", DISPID_NEWENUM, VT_UNKNOWN),
            com::Get<&Self::get_Count>("Count", 0x60020000, VT_I4),
            com::Method<&Self::Refresh>("Refresh", 0x60020002),
        };
        return kMembers;
    }
};

}  // namespace

com::Ref<IDispatch> MakeFields(com::Ref<RowsObject> rows) { return com::Make<FieldsObject>(std::move(rows)); }

com::Ref<IDispatch> MakeField(com::Ref<RowsObject> rows, int ordinal) {
    return com::Make<FieldObject>(std::move(rows), ordinal);
}

com::Ref<IDispatch> MakeNoProperties() { return com::Make<NoProperties>(); }

}  // namespace vlm::data::ado
