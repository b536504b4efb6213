#pragma once

#include <memory>
#include <vector>

#include "AdoObject.h"
#include "automation/Variant.h"
#include "database/MemoryRecordset.h"
#include "database/UpdatableRecordset.h"

namespace vlm::data::ado {

/// A row set of ours behind its table, see MakeRecordsetObject.
class RowsObject final : public AdoObject<IAdoRecordset, INativeRecordset> {
public:
    explicit RowsObject(std::unique_ptr<Recordset> rows, std::shared_ptr<void> owner);

    Recordset& STDMETHODCALLTYPE Native() noexcept override { return *rows_; }

    // For its columns. A value is that of the current row: Error with number 3704 for closed rows, 3021 without a row.
    const Recordset& Row() const;
    void SetValue(int ordinal, const Value& value);
    /// The disconnected row set; Error with number 3251, naming the member, when it is none.
    MemoryRecordset& Memory(std::string_view member) const;
    const MemoryRecordset* MemoryOrNull() const noexcept { return memory_; }
    bool CanWrite() const noexcept { return memory_ != nullptr || updatable_ != nullptr; }
    /// By number from 0, or by name without regard to case. Error with number 3265 when there is none.
    int OrdinalOf(const VARIANT& index) const;

    HRESULT STDMETHODCALLTYPE get_Properties(IDispatch** result) override;
    HRESULT STDMETHODCALLTYPE get_AbsolutePosition(std::intptr_t* result) override;
    HRESULT STDMETHODCALLTYPE put_AbsolutePosition(std::intptr_t position) override;
    HRESULT STDMETHODCALLTYPE putref_ActiveConnection(IDispatch* connection) override;
    HRESULT STDMETHODCALLTYPE put_ActiveConnection(VARIANT connection) override;
    HRESULT STDMETHODCALLTYPE get_ActiveConnection(VARIANT* result) override;
    HRESULT STDMETHODCALLTYPE get_BOF(VARIANT_BOOL* result) override;
    HRESULT STDMETHODCALLTYPE get_Bookmark(VARIANT* result) override;
    HRESULT STDMETHODCALLTYPE put_Bookmark(VARIANT bookmark) override;
    HRESULT STDMETHODCALLTYPE get_CacheSize(std::int32_t* result) override;
    HRESULT STDMETHODCALLTYPE put_CacheSize(std::int32_t size) override;
    HRESULT STDMETHODCALLTYPE get_CursorType(std::int32_t* result) override;
    HRESULT STDMETHODCALLTYPE put_CursorType(std::int32_t type) override;
    HRESULT STDMETHODCALLTYPE get_EOF(VARIANT_BOOL* result) override;
    HRESULT STDMETHODCALLTYPE get_Fields(IDispatch** result) override;
    HRESULT STDMETHODCALLTYPE get_LockType(std::int32_t* result) override;
    HRESULT STDMETHODCALLTYPE put_LockType(std::int32_t type) override;
    HRESULT STDMETHODCALLTYPE get_MaxRecords(std::intptr_t* result) override;
    HRESULT STDMETHODCALLTYPE put_MaxRecords(std::intptr_t most) override;
    HRESULT STDMETHODCALLTYPE get_RecordCount(std::intptr_t* result) override;
    HRESULT STDMETHODCALLTYPE putref_Source(IDispatch* source) override;
    HRESULT STDMETHODCALLTYPE put_Source(BSTR source) override;
    HRESULT STDMETHODCALLTYPE get_Source(VARIANT* result) override;
    HRESULT STDMETHODCALLTYPE AddNew(VARIANT fields, VARIANT values) override;
    HRESULT STDMETHODCALLTYPE CancelUpdate() override;
    HRESULT STDMETHODCALLTYPE Close() override;
    HRESULT STDMETHODCALLTYPE Delete(std::int32_t affected) override;
    HRESULT STDMETHODCALLTYPE GetRows(std::int32_t rows, VARIANT start, VARIANT fields, VARIANT* result) override;
    HRESULT STDMETHODCALLTYPE Move(std::intptr_t count, VARIANT start) override;
    HRESULT STDMETHODCALLTYPE MoveNext() override;
    HRESULT STDMETHODCALLTYPE MovePrevious() override;
    HRESULT STDMETHODCALLTYPE MoveFirst() override;
    HRESULT STDMETHODCALLTYPE MoveLast() override;
    HRESULT STDMETHODCALLTYPE Open(VARIANT source, VARIANT connection, std::int32_t cursorType, std::int32_t lockType,
                                   std::int32_t options) override;
    HRESULT STDMETHODCALLTYPE Requery(std::int32_t) override { return Refuse("Requery"); }
    HRESULT STDMETHODCALLTYPE _xResync(std::int32_t) override { return Refuse("Resync"); }
    HRESULT STDMETHODCALLTYPE Update(VARIANT fields, VARIANT values) override;
    HRESULT STDMETHODCALLTYPE get_AbsolutePage(std::intptr_t* result) override;
    HRESULT STDMETHODCALLTYPE put_AbsolutePage(std::intptr_t page) override;
    HRESULT STDMETHODCALLTYPE get_EditMode(std::int32_t* result) override;
    HRESULT STDMETHODCALLTYPE get_Filter(VARIANT* result) override;
    HRESULT STDMETHODCALLTYPE put_Filter(VARIANT filter) override;
    HRESULT STDMETHODCALLTYPE get_PageCount(std::intptr_t* result) override;
    HRESULT STDMETHODCALLTYPE get_PageSize(std::int32_t* result) override;
    HRESULT STDMETHODCALLTYPE put_PageSize(std::int32_t size) override;
    HRESULT STDMETHODCALLTYPE get_Sort(BSTR* result) override;
    HRESULT STDMETHODCALLTYPE put_Sort(BSTR sort) override;
    HRESULT STDMETHODCALLTYPE get_Status(std::int32_t* result) override;
    HRESULT STDMETHODCALLTYPE get_State(std::int32_t* result) override;
    HRESULT STDMETHODCALLTYPE _xClone(IDispatch** result) override { return Clone(kUnspecified, result); }
    HRESULT STDMETHODCALLTYPE UpdateBatch(std::int32_t affected) override;
    HRESULT STDMETHODCALLTYPE CancelBatch(std::int32_t) override { return Refuse("CancelBatch"); }
    HRESULT STDMETHODCALLTYPE get_CursorLocation(std::int32_t* result) override;
    HRESULT STDMETHODCALLTYPE put_CursorLocation(std::int32_t location) override;
    HRESULT STDMETHODCALLTYPE NextRecordset(VARIANT* recordsAffected, IDispatch** result) override;
    HRESULT STDMETHODCALLTYPE Supports(std::int32_t options, VARIANT_BOOL* result) override;
    HRESULT STDMETHODCALLTYPE get_Collect(VARIANT index, VARIANT* result) override;
    HRESULT STDMETHODCALLTYPE put_Collect(VARIANT index, VARIANT value) override;
    HRESULT STDMETHODCALLTYPE get_MarshalOptions(std::int32_t* result) override;
    HRESULT STDMETHODCALLTYPE put_MarshalOptions(std::int32_t options) override;
    HRESULT STDMETHODCALLTYPE FindRow(BSTR criteria, std::int32_t skip, std::int32_t direction, VARIANT start) override;
    HRESULT STDMETHODCALLTYPE Cancel() override { return S_OK; }  // nothing goes on behind a caller's back
    HRESULT STDMETHODCALLTYPE get_DataSource(IUnknown** result) override;
    HRESULT STDMETHODCALLTYPE putref_DataSource(IUnknown*) override { return Refuse("DataSource"); }
    HRESULT STDMETHODCALLTYPE _xSave(BSTR, std::int32_t) override { return Refuse("Save"); }
    HRESULT STDMETHODCALLTYPE get_ActiveCommand(IDispatch** result) override;
    HRESULT STDMETHODCALLTYPE put_StayInSync(VARIANT_BOOL stay) override { return Only(stay != 0, "StayInSync"); }
    HRESULT STDMETHODCALLTYPE get_StayInSync(VARIANT_BOOL* result) override;
    HRESULT STDMETHODCALLTYPE GetString(std::int32_t format, std::int32_t rows, BSTR columnDelimiter, BSTR rowDelimiter,
                                        BSTR nullText, BSTR* result) override;
    HRESULT STDMETHODCALLTYPE get_DataMember(BSTR* result) override { return GiveText(result, {}); }
    HRESULT STDMETHODCALLTYPE put_DataMember(BSTR member) override;
    HRESULT STDMETHODCALLTYPE CompareBookmarks(VARIANT left, VARIANT right, std::int32_t* result) override;
    HRESULT STDMETHODCALLTYPE Clone(std::int32_t lockType, IDispatch** result) override;
    HRESULT STDMETHODCALLTYPE Resync(std::int32_t, std::int32_t) override { return Refuse("Resync"); }
    HRESULT STDMETHODCALLTYPE Seek(VARIANT, std::int32_t) override { return Refuse("Seek"); }
    HRESULT STDMETHODCALLTYPE put_Index(BSTR) override { return Refuse("Index"); }
    HRESULT STDMETHODCALLTYPE get_Index(BSTR* result) override { return GiveText(result, {}); }
    HRESULT STDMETHODCALLTYPE Save(VARIANT, std::int32_t) override { return Refuse("Save"); }

private:
    static constexpr std::int32_t kUnspecified = -1;

    std::span<const com::Member> Members() const noexcept override;

    /// Late-bound, `Fields` takes the index of one of them too.
    HRESULT STDMETHODCALLTYPE FieldsOrOne(const VARIANT& index, IDispatch** result);

    Recordset& OpenRows() const;
    void StartAt(const VARIANT& start, std::string_view member);
    void MoveToBookmark(const VARIANT& bookmark, std::string_view member);
    void SetCells(const VARIANT& fields, const VARIANT& values);
    std::vector<int> OrdinalsOf(const VARIANT& fields) const;
    HRESULT WhileClosed(std::string_view member) const noexcept;

    std::shared_ptr<void> owner_;
    std::unique_ptr<Recordset> rows_;
    MemoryRecordset* memory_;
    UpdatableRecordset* updatable_;
    std::int32_t pageSize_ = 10;
    std::int32_t cacheSize_ = 1;
};

/// The columns of a row set, and one of them.
com::Ref<IDispatch> MakeFields(com::Ref<RowsObject> rows);
com::Ref<IDispatch> MakeField(com::Ref<RowsObject> rows, int ordinal);
/// The collection of an object that has no properties.
com::Ref<IDispatch> MakeNoProperties();

}  // namespace vlm::data::ado
