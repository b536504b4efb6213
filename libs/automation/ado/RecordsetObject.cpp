#include "ado/RecordsetObject.h"

#include <vector>

#include "ado/AdoTypes.h"
#include "automation/ErrorReport.h"
#include "values/Error.h"

namespace vlm::data::ado {

namespace {

constexpr std::int32_t kRestOfRows = -1;

template <typename Body>
HRESULT GuardedRows(Body&& body) {
    return com::Guarded(kErrorSource, kRecordsetId, std::forward<Body>(body));
}

VARIANT_BOOL Truth(bool truth) { return truth ? VARIANT_TRUE : VARIANT_FALSE; }

/// Columns by rows.
VARIANT BlockOf(std::vector<com::Variant>& cells, std::size_t columns) {
    SAFEARRAYBOUND bounds[2]{};
    bounds[0].cElements = static_cast<decltype(bounds[0].cElements)>(columns);
    bounds[1].cElements = static_cast<decltype(bounds[1].cElements)>(cells.size() / columns);
    SAFEARRAY* const array = SafeArrayCreate(VT_VARIANT, 2, bounds);
    if (array == nullptr) throw std::bad_alloc();
    auto* place = static_cast<VARIANT*>(array->pvData);
    for (com::Variant& cell : cells) *place++ = cell.Detach();
    VARIANT block;
    VariantInit(&block);
    block.vt = VT_ARRAY | VT_VARIANT;
    block.parray = array;
    return block;
}

/// One column; its Value is that of the row set's current row.
class FieldObject final : public com::DispatchObject<IDispatch> {
public:
    FieldObject(com::Ref<RecordsetObject> rows, int ordinal) : rows_(std::move(rows)), ordinal_(ordinal) {}

private:
    std::span<const com::Member> Members() const noexcept override {
        using Self = FieldObject;
        static constexpr std::array kMembers = {
            com::Get<&Self::GetValue>("Value", DISPID_VALUE, VT_VARIANT),
            com::Put<&Self::PutValue>("Value", DISPID_VALUE, VT_VARIANT),
            com::Get<&Self::Name>("Name", 1, VT_BSTR),
            com::Get<&Self::Type>("Type", 2, VT_I4),
        };
        return kMembers;
    }
    HRESULT STDMETHODCALLTYPE GetValue(VARIANT* value) {
        return GuardedRows([&] {
            const Recordset& rows = rows_->Native();
            *value = com::FromValue(rows.ValueOf(ordinal_), rows.TypeOf(ordinal_)).Detach();
        });
    }
    HRESULT STDMETHODCALLTYPE PutValue(const VARIANT& value) {
        return GuardedRows([&] { rows_->SetValue(ordinal_, com::ToValue(value)); });
    }
    HRESULT STDMETHODCALLTYPE Name(BSTR* name) {
        return GuardedRows([&] { *name = com::Bstr(rows_->Native().FieldName(ordinal_)).Detach(); });
    }
    HRESULT STDMETHODCALLTYPE Type(std::int32_t* type) {
        return GuardedRows([&] { *type = AdoTypeOf(rows_->Native().TypeOf(ordinal_)); });
    }

    com::Ref<RecordsetObject> rows_;
    int ordinal_;
};

/// By number from 0, or by name without regard to case. Throws Error with number 3265 when there is none.
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

/// The columns of a row set of ours.
class FieldsObject final : public com::DispatchObject<IDispatch> {
public:
    explicit FieldsObject(com::Ref<RecordsetObject> rows) : rows_(std::move(rows)) {}

private:
    std::span<const com::Member> Members() const noexcept override {
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
    HRESULT STDMETHODCALLTYPE Item(const VARIANT& index, IDispatch** field) {
        return GuardedRows([&] { *field = FieldAt(rows_, index).Detach(); });
    }
    HRESULT STDMETHODCALLTYPE Count(std::int32_t* count) {
        return GuardedRows([&] { *count = rows_->Native().FieldCount(); });
    }
    HRESULT STDMETHODCALLTYPE Append(BSTR name, std::int32_t type, std::int32_t, std::int32_t attributes) {
        return GuardedRows([&] {
            const bool nullable = attributes != kFieldUnspecified && (attributes & kFieldNullable) != 0;
            rows_->Memory().AppendColumn(com::ToUtf8(name), FieldTypeOf(type), nullable);
        });
    }

    com::Ref<RecordsetObject> rows_;
};

}  // namespace

RecordsetObject::RecordsetObject(std::unique_ptr<Recordset> rows, std::shared_ptr<void> owner)
    : owner_(std::move(owner)),
      rows_(std::move(rows)),
      memory_(dynamic_cast<MemoryRecordset*>(rows_.get())),
      updatable_(dynamic_cast<UpdatableRecordset*>(rows_.get())) {}

MemoryRecordset& RecordsetObject::Memory() {
    if (memory_ != nullptr) return *memory_;
    throw Error("L'insieme di righe si può solo leggere in avanti.", kNotSupported);
}

void RecordsetObject::SetValue(int ordinal, const Value& value) {
    updatable_ != nullptr ? updatable_->SetValue(ordinal, value) : Memory().SetValue(ordinal, value);
}

std::span<const com::Member> RecordsetObject::Members() const noexcept {
    using Self = RecordsetObject;
    static constexpr std::array kMembers = {
        com::Get<&Self::Fields>("Fields", DISPID_VALUE, VT_DISPATCH, {{"Index", VT_VARIANT, true}}),
        com::Get<&Self::State>("State", 1, VT_I4),
        com::Get<&Self::AtEnd>("EOF", 2, VT_BOOL),
        com::Get<&Self::AtStart>("BOF", 3, VT_BOOL),
        com::Get<&Self::RecordCount>("RecordCount", 4, VT_I4),
        com::Get<&Self::GetFilter>("Filter", 5, VT_VARIANT),
        com::Put<&Self::PutFilter>("Filter", 5, VT_VARIANT),
        com::Method<&Self::MoveNext>("MoveNext", 6),
        com::Method<&Self::MoveFirst>("MoveFirst", 7),
        com::Method<&Self::MovePrevious>("MovePrevious", 8),
        com::Method<&Self::AddNew>("AddNew", 9),
        com::Method<&Self::Update>("Update", 10),
        com::Method<&Self::CancelUpdate>("CancelUpdate", 11),
        com::Method<&Self::Open>("Open", 12),
        com::Method<&Self::Close>("Close", 13),
        com::Method<&Self::GetRows>("GetRows", 14, VT_VARIANT, {{"Rows", VT_I4, true, kRestOfRows}}),
        com::Method<&Self::NextRecordset>("NextRecordset", 15, VT_DISPATCH, {{"RecordsAffected", VT_VARIANT, true}}),
    };
    return kMembers;
}

void* RecordsetObject::Find(const IID& iid) noexcept {
    if (com::Same(iid, kRecordsetId)) return static_cast<IDispatch*>(this);
    return DispatchObject::Find(iid);
}

HRESULT RecordsetObject::Fields(const VARIANT& index, IDispatch** fields) {
    return GuardedRows([&] {
        const com::Ref<RecordsetObject> self(this);
        if (com::IsMissing(index)) {
            *fields = com::Make<FieldsObject>(self).Detach();
        } else {
            *fields = FieldAt(self, index).Detach();
        }
    });
}

HRESULT RecordsetObject::State(std::int32_t* state) {
    return GuardedRows([&] { *state = rows_->IsOpen() ? kStateOpen : 0; });
}

HRESULT RecordsetObject::AtEnd(VARIANT_BOOL* atEnd) {
    return GuardedRows([&] { *atEnd = Truth(rows_->AtEnd()); });
}

HRESULT RecordsetObject::AtStart(VARIANT_BOOL* atStart) {
    return GuardedRows([&] {
        // Without rows a row set stands before its first and after its last at once.
        const bool empty = memory_ != nullptr && memory_->RecordCount() == 0 && memory_->AtEnd();
        *atStart = Truth(memory_ != nullptr && (empty || memory_->AtStart()));
    });
}

HRESULT RecordsetObject::RecordCount(std::int32_t* count) {
    // Rows that are read forward are not counted before the last.
    return GuardedRows([&] { *count = memory_ == nullptr ? -1 : static_cast<std::int32_t>(memory_->RecordCount()); });
}

HRESULT RecordsetObject::GetFilter(VARIANT* filter) {
    return GuardedRows([&] { *filter = com::Variant(Memory().Filter()).Detach(); });
}

HRESULT RecordsetObject::PutFilter(const VARIANT& filter) {
    return GuardedRows([&] {
        const Value value = com::ToValue(filter);
        const bool none = !std::holds_alternative<std::string>(value) && NumberOf(value) == 0;  // adFilterNone
        Memory().SetFilter(none ? std::string() : TextOf(value));
    });
}

HRESULT RecordsetObject::MoveNext() {
    return GuardedRows([&] {
        if (rows_->AtEnd()) throw Error("Non c'è una riga corrente.", kNoCurrentRow);
        rows_->MoveNext();
    });
}

HRESULT RecordsetObject::MoveFirst() {
    return GuardedRows([&] { Memory().MoveFirst(); });
}

HRESULT RecordsetObject::MovePrevious() {
    return GuardedRows([&] { Memory().MovePrevious(); });
}

HRESULT RecordsetObject::AddNew() {
    return GuardedRows([&] { updatable_ != nullptr ? updatable_->AddNew() : Memory().AddNew(); });
}

HRESULT RecordsetObject::Update() {
    return GuardedRows([&] { updatable_ != nullptr ? updatable_->Update() : Memory().Update(); });
}

HRESULT RecordsetObject::CancelUpdate() {
    return GuardedRows([&] { updatable_ != nullptr ? updatable_->CancelUpdate() : Memory().CancelUpdate(); });
}

HRESULT RecordsetObject::Open() {
    return GuardedRows([&] { Memory().Open(); });
}

HRESULT RecordsetObject::Close() {
    return GuardedRows([&] { rows_->Close(); });
}

HRESULT RecordsetObject::GetRows(std::int32_t rows, VARIANT* block) {
    return GuardedRows([&] {
        if (rows_->AtEnd()) throw Error("Non c'è una riga corrente.", kNoCurrentRow);
        const int columns = rows_->FieldCount();
        std::vector<com::Variant> cells;
        for (std::int32_t count = 0; count != rows && !rows_->AtEnd(); ++count, rows_->MoveNext()) {
            for (int i = 0; i < columns; ++i) cells.push_back(com::FromValue(rows_->ValueOf(i), rows_->TypeOf(i)));
        }
        *block = BlockOf(cells, static_cast<std::size_t>(columns));
    });
}

HRESULT RecordsetObject::NextRecordset(const VARIANT&, IDispatch** next) {
    return GuardedRows([&] {
        if (!rows_->NextRecordset()) return;
        // The rows go on in a new object; this one is closed from now on.
        std::unique_ptr<Recordset> rest = std::move(rows_);
        rows_ = std::make_unique<MemoryRecordset>();
        memory_ = nullptr;
        updatable_ = nullptr;
        *next = com::Make<RecordsetObject>(std::move(rest), owner_).Detach();
    });
}

}  // namespace vlm::data::ado
