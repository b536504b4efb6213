#include "RowsObject.h"

#include "ado/RecordsetObject.h"
#include "values/Utf8.h"

namespace vlm::data::ado {

namespace {

constexpr std::int32_t kInvalidArgument = 3001, kObjectClosed = 3704, kObjectOpen = 3705;  // run-time error numbers
constexpr std::int32_t kForwardOnly = 0, kKeyset = 1, kStatic = 3;                         // kinds of cursors
constexpr std::int32_t kReadOnly = 1, kOptimistic = 3;                                     // kinds of locks
constexpr std::int32_t kServerSide = 2, kClientSide = 3;
constexpr std::int32_t kBeforeFirst = -2, kBehindLast = -3, kUnknownPlace = -1;
constexpr std::int32_t kCurrentRow = 1;  // what an operation affects
// What rows support: cursors that go back, bookmarks, places, finding, adding, deleting, changing.
constexpr std::int32_t kSupportsMoves = 0x100 | 0x200 | 0x2000 | 0x4000 | 0x80000;
constexpr std::int32_t kSupportsAdding = 0x1000400, kSupportsDeleting = 0x1000800, kSupportsChanging = 0x1008000;

std::vector<com::Variant> ElementsOf(const VARIANT& given) {
    VARIANT place;
    const VARIANT& value = com::Resolve(given, place);
    if ((value.vt & VT_ARRAY) == 0) return {com::Variant(value)};
    VARTYPE type = VT_EMPTY;
    if (SafeArrayGetDim(value.parray) != 1 || FAILED(SafeArrayGetVartype(value.parray, &type)) || type != VT_VARIANT) {
        throw Error("L'elenco dei campi o dei valori non è valido.", kInvalidArgument);
    }
    const auto* const cells = static_cast<const VARIANT*>(value.parray->pvData);
    return std::vector<com::Variant>(cells, cells + value.parray->rgsabound[0].cElements);
}

/// Columns by rows.
com::Variant BlockOf(std::vector<com::Variant>& cells, std::size_t columns) {
    SAFEARRAYBOUND bounds[2]{};
    bounds[0].cElements = static_cast<decltype(bounds[0].cElements)>(columns);
    bounds[1].cElements = static_cast<decltype(bounds[1].cElements)>(cells.size() / columns);
    com::Variant block;
    block.Get().parray = SafeArrayCreate(VT_VARIANT, 2, bounds);
    if (block.Get().parray == nullptr) throw std::bad_alloc();
    block.Get().vt = VT_ARRAY | VT_VARIANT;
    auto* place = static_cast<VARIANT*>(block.Get().parray->pvData);
    for (com::Variant& cell : cells) *place++ = cell.Detach();
    return block;
}

/// A bookmark is the number of a row, from 1, as a real: what a whole number stands for is told apart by that.
std::uint32_t NumberOfBookmark(const VARIANT& bookmark) {
    VARIANT place;
    const VARIANT& value = com::Resolve(bookmark, place);
    if (value.vt != VT_R8 || !(value.dblVal >= 1 && value.dblVal <= 4294967295.0)) {
        throw Error("Il segnalibro non è di queste righe.", kInvalidArgument);
    }
    return static_cast<std::uint32_t>(value.dblVal) - 1;
}

std::string TextOr(BSTR given, std::string_view usual) {
    return given == nullptr ? std::string(usual) : com::ToUtf8(given);
}

[[noreturn]] void ThrowNoRow() { throw Error("Non c'è una riga corrente.", kNoCurrentRow); }

}  // namespace

com::Ref<IDispatch> MakeRecordsetObject(std::unique_ptr<Recordset> rows, std::shared_ptr<void> owner) {
    return com::Make<RowsObject>(std::move(rows), std::move(owner));
}

RowsObject::RowsObject(std::unique_ptr<Recordset> rows, std::shared_ptr<void> owner)
    : owner_(std::move(owner)),
      rows_(std::move(rows)),
      memory_(dynamic_cast<MemoryRecordset*>(rows_.get())),
      updatable_(dynamic_cast<UpdatableRecordset*>(rows_.get())) {}

Recordset& RowsObject::OpenRows() const {
    if (!rows_->IsOpen()) throw Error("L'insieme di righe non è aperto.", kObjectClosed);
    return *rows_;
}

const Recordset& RowsObject::Row() const {
    const Recordset& rows = OpenRows();
    const bool present = memory_ != nullptr      ? memory_->IsAdding() || memory_->HasRow()
                         : updatable_ != nullptr ? true  // which knows of the row that is added
                                                 : !rows.AtEnd();
    if (!present) ThrowNoRow();
    return rows;
}

MemoryRecordset& RowsObject::Memory(std::string_view member) const {
    OpenRows();
    if (memory_ == nullptr) ThrowUnsupported(member);
    return *memory_;
}

void RowsObject::SetValue(int ordinal, const Value& value) {
    Row();
    updatable_ != nullptr ? updatable_->SetValue(ordinal, value) : Memory("Value").SetValue(ordinal, value);
}

int RowsObject::OrdinalOf(const VARIANT& index) const {
    const Value value = com::ToValue(index);
    int ordinal = -1;
    if (const auto* name = std::get_if<std::string>(&value)) {
        ordinal = rows_->FindField(*name);
    } else if (const double number = NumberOf(value); number >= 0 && number < rows_->FieldCount()) {
        ordinal = static_cast<int>(number);
    }
    if (ordinal < 0) throw Error("La colonna " + TextOf(value) + " non esiste nell'insieme di righe.", kItemNotFound);
    return ordinal;
}

std::vector<int> RowsObject::OrdinalsOf(const VARIANT& fields) const {
    std::vector<int> ordinals;
    if (NotGiven(fields)) {
        for (int ordinal = 0; ordinal < rows_->FieldCount(); ++ordinal) ordinals.push_back(ordinal);
    } else {
        for (const com::Variant& field : ElementsOf(fields)) ordinals.push_back(OrdinalOf(field.Get()));
    }
    return ordinals;
}

void RowsObject::SetCells(const VARIANT& fields, const VARIANT& values) {
    if (NotGiven(fields)) return;
    const std::vector<int> ordinals = OrdinalsOf(fields);
    const std::vector<com::Variant> cells = ElementsOf(values);
    if (cells.size() != ordinals.size()) throw Error("I valori non sono tanti quanti i campi.", kInvalidArgument);
    for (std::size_t at = 0; at < cells.size(); ++at) SetValue(ordinals[at], cells[at].Value());
}

void RowsObject::MoveToBookmark(const VARIANT& bookmark, std::string_view member) {
    MemoryRecordset& rows = Memory(member);
    if (!rows.MoveToNumber(NumberOfBookmark(bookmark)))
        throw Error("La riga del segnalibro non c'è.", kInvalidArgument);
}

/// Where a walk begins: on the current row, at an end (1 and 2), or on the row of a bookmark.
void RowsObject::StartAt(const VARIANT& start, std::string_view member) {
    if (NotGiven(start)) return;
    VARIANT place;
    const VARIANT& value = com::Resolve(start, place);
    if (value.vt == VT_R8) return MoveToBookmark(value, member);
    const double end = NumberOf(com::ToValue(value));
    if (end == 1) Memory(member).MoveFirst();
    if (end == 2) Memory(member).MoveToRow(Memory(member).RecordCount() - 1);
}

HRESULT RowsObject::WhileClosed(std::string_view member) const noexcept {
    return Do([&] {
        if (rows_->IsOpen()) throw Error(std::string(member) + ": le righe sono aperte.", kObjectOpen);
    });
}

HRESULT RowsObject::get_Properties(IDispatch** result) {
    return Give(result, [] { return MakeNoProperties().Detach(); });
}

HRESULT RowsObject::get_AbsolutePosition(std::intptr_t* result) {
    return Give(result, [&]() -> std::int64_t {
        if (memory_ == nullptr) return kUnknownPlace;
        const MemoryRecordset& rows = Memory("AbsolutePosition");
        return rows.AtEnd() ? kBehindLast : rows.AtStart() ? kBeforeFirst : rows.Place() + 1;
    });
}

HRESULT RowsObject::put_AbsolutePosition(std::intptr_t position) {
    return Do([&] {
        MemoryRecordset& rows = Memory("AbsolutePosition");
        if (position < 1) throw Error("La posizione non è valida.", kInvalidArgument);
        rows.MoveToRow(position - 1);
    });
}

HRESULT RowsObject::putref_ActiveConnection(IDispatch* connection) {
    return Only(connection == nullptr, "ActiveConnection");
}

HRESULT RowsObject::put_ActiveConnection(VARIANT connection) {
    const bool none = connection.vt == VT_EMPTY || connection.vt == VT_NULL ||
                      (connection.vt == VT_DISPATCH && connection.pdispVal == nullptr);
    return Only(none, "ActiveConnection");
}

HRESULT RowsObject::get_ActiveConnection(VARIANT* result) {
    return GiveValue(result, [] { return static_cast<IDispatch*>(nullptr); });
}

HRESULT RowsObject::get_BOF(VARIANT_BOOL* result) {
    return Give(result, [&] {
        const Recordset& rows = OpenRows();
        if (memory_ == nullptr) return VARIANT_FALSE;
        // Without rows a row set stands before its first and after its last at once.
        return Truth(memory_->AtStart() || (memory_->RecordCount() == 0 && rows.AtEnd()));
    });
}

HRESULT RowsObject::get_EOF(VARIANT_BOOL* result) {
    return Give(result, [&] {
        const Recordset& rows = OpenRows();
        return Truth(rows.AtEnd() || (memory_ != nullptr && memory_->AtStart() && memory_->RecordCount() == 0));
    });
}

HRESULT RowsObject::get_Bookmark(VARIANT* result) {
    return GiveValue(result, [&] {
        Row();
        return static_cast<double>(Memory("Bookmark").RowNumber()) + 1;
    });
}

HRESULT RowsObject::put_Bookmark(VARIANT bookmark) {
    return Do([&] { MoveToBookmark(bookmark, "Bookmark"); });
}

HRESULT RowsObject::get_CacheSize(std::int32_t* result) {
    return Give(result, [&] { return cacheSize_; });
}

/// A hint, which rows of ours have no use for.
HRESULT RowsObject::put_CacheSize(std::int32_t size) {
    if (size > 0) cacheSize_ = size;
    return Only(size > 0, "CacheSize");
}

HRESULT RowsObject::get_CursorType(std::int32_t* result) {
    return Give(result, [&] { return memory_ != nullptr ? kStatic : updatable_ != nullptr ? kKeyset : kForwardOnly; });
}

/// What is wished for is given as far as rows can; what they are is then told.
HRESULT RowsObject::put_CursorType(std::int32_t) { return WhileClosed("CursorType"); }

HRESULT RowsObject::get_LockType(std::int32_t* result) {
    return Give(result, [&] { return CanWrite() ? kOptimistic : kReadOnly; });
}

HRESULT RowsObject::put_LockType(std::int32_t) { return WhileClosed("LockType"); }

HRESULT RowsObject::get_CursorLocation(std::int32_t* result) {
    return Give(result, [&] { return memory_ != nullptr ? kClientSide : kServerSide; });
}

HRESULT RowsObject::put_CursorLocation(std::int32_t location) {
    const HRESULT closed = WhileClosed("CursorLocation");
    return FAILED(closed) ? closed : Only(location == kClientSide, "CursorLocation");
}

HRESULT RowsObject::get_Fields(IDispatch** result) {
    return Give(result, [&] { return MakeFields(com::Ref<RowsObject>(this)).Detach(); });
}

HRESULT RowsObject::FieldsOrOne(const VARIANT& index, IDispatch** result) {
    if (com::IsMissing(index)) return get_Fields(result);
    return Give(result, [&] { return MakeField(com::Ref<RowsObject>(this), OrdinalOf(index)).Detach(); });
}

HRESULT RowsObject::get_MaxRecords(std::intptr_t* result) {
    return Give(result, [] { return 0; });
}

HRESULT RowsObject::put_MaxRecords(std::intptr_t most) { return Only(most == 0, "MaxRecords"); }

HRESULT RowsObject::get_RecordCount(std::intptr_t* result) {
    return Give(result, [&]() -> std::int64_t {
        OpenRows();
        // Rows that are read forward are not counted before the last.
        return memory_ == nullptr ? kUnknownPlace : memory_->RecordCount();
    });
}

HRESULT RowsObject::putref_Source(IDispatch* source) { return Only(source == nullptr, "Source"); }
HRESULT RowsObject::put_Source(BSTR source) { return Only(SysStringLen(source) == 0, "Source"); }

HRESULT RowsObject::get_Source(VARIANT* result) {
    return GiveValue(result, [] { return ""; });
}

HRESULT RowsObject::AddNew(VARIANT fields, VARIANT values) {
    return Do([&] {
        OpenRows();
        updatable_ != nullptr ? updatable_->AddNew() : Memory("AddNew").AddNew();
        if (NotGiven(fields)) return;
        SetCells(fields, values);
        updatable_ != nullptr ? updatable_->Update() : memory_->Update();
    });
}

HRESULT RowsObject::Update(VARIANT fields, VARIANT values) {
    return Do([&] {
        OpenRows();
        SetCells(fields, values);
        updatable_ != nullptr ? updatable_->Update() : Memory("Update").Update();
    });
}

HRESULT RowsObject::UpdateBatch(std::int32_t) {
    return Do([&] { Memory("UpdateBatch").Update(); });
}

HRESULT RowsObject::CancelUpdate() {
    return Do([&] { updatable_ != nullptr ? updatable_->CancelUpdate() : Memory("CancelUpdate").CancelUpdate(); });
}

HRESULT RowsObject::Close() {
    return Do([&] { OpenRows().Close(); });
}

HRESULT RowsObject::Delete(std::int32_t affected) {
    return Do([&] {
        MemoryRecordset& rows = Memory("Delete");
        if (affected != kCurrentRow) ThrowUnsupported("Delete");
        Row();
        rows.Delete();
    });
}

HRESULT RowsObject::GetRows(std::int32_t count, VARIANT start, VARIANT fields, VARIANT* result) {
    return GiveValue(result, [&] {
        Recordset& rows = OpenRows();
        StartAt(start, "GetRows");
        if (rows.AtEnd()) ThrowNoRow();
        const std::vector<int> ordinals = OrdinalsOf(fields);
        std::vector<com::Variant> cells;
        for (std::int32_t row = 0; row != count && !rows.AtEnd(); ++row, rows.MoveNext()) {
            for (const int at : ordinals) cells.push_back(com::FromValue(rows.ValueOf(at), rows.TypeOf(at)));
        }
        return BlockOf(cells, ordinals.size());
    });
}

HRESULT RowsObject::GetString(std::int32_t format, std::int32_t count, BSTR columnDelimiter, BSTR rowDelimiter,
                              BSTR nullText, BSTR* result) {
    constexpr std::int32_t kDelimited = 2;
    return Give(result, [&] {
        Recordset& rows = OpenRows();
        if (format != kDelimited) ThrowUnsupported("GetString");
        if (rows.AtEnd()) ThrowNoRow();
        const std::string column = TextOr(columnDelimiter, "\t"), row = TextOr(rowDelimiter, "\r");
        const std::string null = TextOr(nullText, "");
        std::string text;
        for (std::int32_t done = 0; done != count && !rows.AtEnd(); ++done, rows.MoveNext()) {
            for (int at = 0; at < rows.FieldCount(); ++at) {
                if (at > 0) text += column;
                text += rows.IsNull(at) ? null : rows.TextOf(at);
            }
            text += row;
        }
        return com::Bstr(text).Detach();
    });
}

HRESULT RowsObject::Move(std::intptr_t count, VARIANT start) {
    return Do([&] {
        Recordset& rows = OpenRows();
        StartAt(start, "Move");
        if ((count > 0 && rows.AtEnd()) || (count < 0 && memory_ != nullptr && memory_->AtStart())) ThrowNoRow();
        if (memory_ != nullptr) return memory_->MoveToRow(memory_->Place() + count);
        if (count < 0) ThrowUnsupported("Move");
        for (; count > 0 && !rows.AtEnd(); --count) rows.MoveNext();
    });
}

HRESULT RowsObject::MoveNext() {
    return Do([&] {
        Recordset& rows = OpenRows();
        if (rows.AtEnd()) ThrowNoRow();
        rows.MoveNext();
    });
}

HRESULT RowsObject::MovePrevious() {
    return Do([&] {
        MemoryRecordset& rows = Memory("MovePrevious");
        if (rows.AtStart()) ThrowNoRow();
        rows.MovePrevious();
    });
}

HRESULT RowsObject::MoveFirst() {
    return Do([&] {
        MemoryRecordset& rows = Memory("MoveFirst");
        rows.MoveFirst();
        if (rows.AtEnd()) ThrowNoRow();
    });
}

HRESULT RowsObject::MoveLast() {
    return Do([&] {
        MemoryRecordset& rows = Memory("MoveLast");
        rows.MoveFirst();  // what is in hand becomes a row
        if (rows.AtEnd()) ThrowNoRow();
        rows.MoveToRow(rows.RecordCount() - 1);
    });
}

HRESULT RowsObject::Open(VARIANT source, VARIANT connection, std::int32_t, std::int32_t, std::int32_t) {
    return Do([&] {
        if (rows_->IsOpen()) throw Error("L'insieme di righe è già aperto.", kObjectOpen);
        if (memory_ == nullptr || !NotGiven(source) || !NotGiven(connection)) ThrowUnsupported("Open");
        memory_->Open();
    });
}

HRESULT RowsObject::get_PageSize(std::int32_t* result) {
    return Give(result, [&] { return pageSize_; });
}

HRESULT RowsObject::put_PageSize(std::int32_t size) {
    if (size > 0) pageSize_ = size;
    return Only(size > 0, "PageSize");
}

HRESULT RowsObject::get_PageCount(std::intptr_t* result) {
    return Give(result, [&]() -> std::int64_t {
        if (memory_ == nullptr) return kUnknownPlace;
        return (Memory("PageCount").RecordCount() + pageSize_ - 1) / pageSize_;
    });
}

HRESULT RowsObject::get_AbsolutePage(std::intptr_t* result) {
    return Give(result, [&]() -> std::int64_t {
        std::intptr_t position = 0;
        if (FAILED(get_AbsolutePosition(&position))) ThrowUnsupported("AbsolutePage");
        return position < 0 ? position : (position - 1) / pageSize_ + 1;
    });
}

HRESULT RowsObject::put_AbsolutePage(std::intptr_t page) { return put_AbsolutePosition((page - 1) * pageSize_ + 1); }

HRESULT RowsObject::get_EditMode(std::int32_t* result) {
    return Give(result, [&] {
        return memory_ == nullptr ? 0 : memory_->IsAdding() ? 2 : memory_->IsChanging() ? 1 : 0;
    });
}

HRESULT RowsObject::get_Status(std::int32_t* result) {
    constexpr std::int32_t kUnmodified = 8, kNew = 1, kModified = 2;
    return Give(result, [&] {
        Row();
        if (memory_ == nullptr) return kUnmodified;
        return memory_->IsAdding() ? kNew : memory_->IsChanging() ? kModified : kUnmodified;
    });
}

HRESULT RowsObject::get_State(std::int32_t* result) {
    return Give(result, [&] { return rows_->IsOpen() ? kStateOpen : 0; });
}

HRESULT RowsObject::get_Filter(VARIANT* result) {
    return GiveValue(result, [&] {
        const std::string& filter = Memory("Filter").Filter();
        return filter.empty() ? com::Variant(std::int32_t{0}) : com::Variant(filter);
    });
}

HRESULT RowsObject::put_Filter(VARIANT filter) {
    return Do([&] {
        MemoryRecordset& rows = Memory("Filter");
        const Value value = com::ToValue(filter);
        const bool text = std::holds_alternative<std::string>(value);
        if (!text && NumberOf(value) != 0) ThrowUnsupported("Filter");  // rows changed, rows in conflict, ...
        rows.SetFilter(text ? TextOf(value) : std::string());
    });
}

HRESULT RowsObject::get_Sort(BSTR* result) {
    return Give(result, [&] { return com::Bstr(Memory("Sort").Sort()).Detach(); });
}

HRESULT RowsObject::put_Sort(BSTR sort) {
    return Do([&] { Memory("Sort").SetSort(com::ToUtf8(sort)); });
}

HRESULT RowsObject::FindRow(BSTR criteria, std::int32_t skip, std::int32_t direction, VARIANT start) {
    return Do([&] {
        MemoryRecordset& rows = Memory("Find");
        const std::vector<RowCondition> conditions = ParseRowFilter(com::ToUtf8(criteria), rows);
        if (conditions.size() != 1) throw Error("La ricerca vuole una condizione sola.", kInvalidArgument);
        StartAt(start, "Find");
        Row();
        const std::int64_t step = direction < 0 ? -1 : 1;
        rows.MoveToRow(rows.Place() + step * skip);
        while (!rows.AtEnd() && !rows.AtStart() &&
               !conditions.front().IsMetBy(rows.ValueOf(conditions.front().ordinal))) {
            rows.MoveToRow(rows.Place() + step);
        }
    });
}

HRESULT RowsObject::NextRecordset(VARIANT*, IDispatch** result) {
    return Give(result, [&]() -> IDispatch* {
        if (!rows_->NextRecordset()) return nullptr;
        // The rows go on in a new object; this one is closed from now on.
        std::unique_ptr<Recordset> rest = std::move(rows_);
        rows_ = std::make_unique<MemoryRecordset>();
        memory_ = nullptr;
        updatable_ = nullptr;
        return MakeRecordsetObject(std::move(rest), owner_).Detach();
    });
}

HRESULT RowsObject::Supports(std::int32_t options, VARIANT_BOOL* result) {
    return Give(result, [&] {
        std::int32_t served = CanWrite() ? kSupportsAdding | kSupportsChanging : 0;
        if (memory_ != nullptr) served |= kSupportsMoves | kSupportsDeleting;
        return Truth((options & served) == options);
    });
}

HRESULT RowsObject::get_Collect(VARIANT index, VARIANT* result) {
    return GiveValue(result, [&] {
        const int ordinal = OrdinalOf(index);
        return com::FromValue(Row().ValueOf(ordinal), rows_->TypeOf(ordinal));
    });
}

HRESULT RowsObject::put_Collect(VARIANT index, VARIANT value) {
    return Do([&] { SetValue(OrdinalOf(index), com::ToValue(value)); });
}

HRESULT RowsObject::get_MarshalOptions(std::int32_t* result) {
    return Give(result, [] { return 0; });
}

HRESULT RowsObject::put_MarshalOptions(std::int32_t options) { return Only(options == 0, "MarshalOptions"); }

HRESULT RowsObject::get_DataSource(IUnknown** result) {
    return Give(result, []() -> IUnknown* { return nullptr; });
}

HRESULT RowsObject::get_ActiveCommand(IDispatch** result) {
    return Give(result, []() -> IDispatch* { return nullptr; });
}

HRESULT RowsObject::get_StayInSync(VARIANT_BOOL* result) {
    return Give(result, [] { return VARIANT_TRUE; });
}

HRESULT RowsObject::put_DataMember(BSTR member) { return Only(SysStringLen(member) == 0, "DataMember"); }

HRESULT RowsObject::CompareBookmarks(VARIANT left, VARIANT right, std::int32_t* result) {
    constexpr std::int32_t kLess = 0, kEqual = 1, kGreater = 2, kUnequal = 3;
    return Give(result, [&] {
        const MemoryRecordset& rows = Memory("CompareBookmarks");
        const std::uint32_t first = NumberOfBookmark(left), second = NumberOfBookmark(right);
        if (first == second) return kEqual;
        if (!rows.Sort().empty()) return kUnequal;  // numbers are not the order then
        return first < second ? kLess : kGreater;
    });
}

HRESULT RowsObject::Clone(std::int32_t lockType, IDispatch** result) {
    return Give(result, [&] {
        if (lockType == kReadOnly) ThrowUnsupported("Clone");
        return MakeRecordsetObject(Memory("Clone").Share(), owner_).Detach();
    });
}

}  // namespace vlm::data::ado
