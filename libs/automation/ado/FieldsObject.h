#pragma once

#include "ado/RecordsetObject.h"

namespace vlm::data::ado {

/// The columns of a row set of ours.
class FieldsObject final : public com::DispatchObject<IDispatch> {
public:
    explicit FieldsObject(com::Ref<RecordsetObject> rows) : rows_(std::move(rows)) {}

private:
    std::span<const com::Member> Members() const noexcept override;

    HRESULT STDMETHODCALLTYPE Item(const VARIANT& index, IDispatch** field);
    HRESULT STDMETHODCALLTYPE Count(std::int32_t* count);
    HRESULT STDMETHODCALLTYPE Append(BSTR name, std::int32_t type, std::int32_t definedSize, std::int32_t attributes);

    com::Ref<RecordsetObject> rows_;
};

/// One column; its Value is that of the row set's current row.
class FieldObject final : public com::DispatchObject<IDispatch> {
public:
    FieldObject(com::Ref<RecordsetObject> rows, int ordinal) : rows_(std::move(rows)), ordinal_(ordinal) {}

private:
    std::span<const com::Member> Members() const noexcept override;

    HRESULT STDMETHODCALLTYPE GetValue(VARIANT* value);
    HRESULT STDMETHODCALLTYPE PutValue(const VARIANT& value);
    HRESULT STDMETHODCALLTYPE Name(BSTR* name);
    HRESULT STDMETHODCALLTYPE Type(std::int32_t* type);

    com::Ref<RecordsetObject> rows_;
    int ordinal_;
};

/// By number from 0, or by name without regard to case. Throws Error with number 3265 when there is none.
com::Ref<FieldObject> FieldAt(const com::Ref<RecordsetObject>& rows, const VARIANT& index);

}  // namespace vlm::data::ado
