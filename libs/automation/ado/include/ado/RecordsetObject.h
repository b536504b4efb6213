#pragma once

#include <memory>

#include "ado/AdoTypes.h"
#include "automation/Object.h"
#include "database/MemoryRecordset.h"
#include "database/UpdatableRecordset.h"

namespace vlm::data::ado {

/// What an error of our data objects names as its source when it has none of its own.
inline constexpr std::string_view kErrorSource = "VlmASLServicesLib";

/// A row set of ours as an automation object. Over a disconnected row set it can be given columns, filled, filtered and
/// moved to and fro, over one opened for update it can be filled and read forward; over any other it is only read
/// forward, and the rest fails with number 3251.
class RecordsetObject final : public com::DispatchObject<IDispatch, INativeRecordset> {
public:
    /// `owner` is what must live as long: the connection of an opened row set, the library.
    explicit RecordsetObject(std::unique_ptr<Recordset> rows, std::shared_ptr<void> owner = nullptr);

    Recordset& STDMETHODCALLTYPE Native() noexcept override { return *rows_; }

    /// Throws Error over a row set that is only read.
    MemoryRecordset& Memory();
    void SetValue(int ordinal, const Value& value);

private:
    std::span<const com::Member> Members() const noexcept override;
    void* Find(const IID& iid) noexcept override;

    HRESULT STDMETHODCALLTYPE Fields(const VARIANT& index, IDispatch** fields);
    HRESULT STDMETHODCALLTYPE State(std::int32_t* state);
    HRESULT STDMETHODCALLTYPE AtEnd(VARIANT_BOOL* atEnd);
    HRESULT STDMETHODCALLTYPE AtStart(VARIANT_BOOL* atStart);
    HRESULT STDMETHODCALLTYPE RecordCount(std::int32_t* count);
    HRESULT STDMETHODCALLTYPE GetFilter(VARIANT* filter);
    HRESULT STDMETHODCALLTYPE PutFilter(const VARIANT& filter);
    HRESULT STDMETHODCALLTYPE MoveNext();
    HRESULT STDMETHODCALLTYPE MoveFirst();
    HRESULT STDMETHODCALLTYPE MovePrevious();
    HRESULT STDMETHODCALLTYPE AddNew();
    HRESULT STDMETHODCALLTYPE Update();
    HRESULT STDMETHODCALLTYPE CancelUpdate();
    HRESULT STDMETHODCALLTYPE Open();
    HRESULT STDMETHODCALLTYPE Close();
    HRESULT STDMETHODCALLTYPE GetRows(std::int32_t rows, VARIANT* block);
    HRESULT STDMETHODCALLTYPE NextRecordset(const VARIANT& changed, IDispatch** next);

    std::shared_ptr<void> owner_;
    std::unique_ptr<Recordset> rows_;
    MemoryRecordset* memory_;
    UpdatableRecordset* updatable_;
};

}  // namespace vlm::data::ado
