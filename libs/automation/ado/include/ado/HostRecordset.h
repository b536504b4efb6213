#pragma once

#include <deque>
#include <memory>
#include <string>

#include "ado/AdoTypes.h"
#include "automation/LateBound.h"
#include "automation/Variant.h"

namespace vlm::data::ado {

/// A row set whose cells are automation values.
class VariantRecordset : public Recordset {
public:
    bool IsNull(int ordinal) const override;
    std::string_view TextOf(int ordinal) const override;
    double NumberOf(int ordinal) const override;
    std::int64_t IntegerOf(int ordinal) const override;
    Currency AmountOf(int ordinal) const override;
    std::optional<Date> DateOf(int ordinal) const override;
    Value ValueOf(int ordinal) const override;

protected:
    /// A cell of the current row; throws Error when there is none. Valid until the next read or move.
    virtual const VARIANT& Cell(int ordinal) const = 0;

private:
    mutable std::deque<std::string> texts_;  // what TextOf hands out, by ordinal
};

/// A row set that a host hands in, read as it stands: the host may move it or give it other columns between two reads,
/// so nothing of it is kept. Closing it is the host's business.
class HostRecordset final : public VariantRecordset {
public:
    explicit HostRecordset(com::Ref<IDispatch> rows) : rows_(std::move(rows)) {}

    int FieldCount() const override;
    std::string_view FieldName(int ordinal) const override;
    FieldType TypeOf(int ordinal) const override;
    bool IsOpen() const override;
    bool AtEnd() const override;
    void MoveNext() override { rows_.Call("MoveNext"); }
    void Close() noexcept override {}

private:
    const VARIANT& Cell(int ordinal) const override;
    com::LateBound Field(int ordinal) const;

    com::LateBound rows_;
    mutable std::deque<std::string> names_;  // what FieldName hands out
    mutable com::Variant cell_;
};

/// A reference to a host's row set: the object as it came, and the row set that the library reads.
class RecordsetReference {
public:
    RecordsetReference() = default;
    /// Empty when the object does not offer the row set interface and IDispatch.
    explicit RecordsetReference(IDispatch* object);

    IDispatch* Object() const noexcept { return object_.Get(); }
    /// To be asked for at each use: an object of ours may go on to another row set. Null when there is none.
    Recordset* Rows() const noexcept { return native_ ? &native_->Native() : foreign_.get(); }

private:
    com::Ref<IDispatch> object_;
    com::Ref<INativeRecordset> native_;
    std::unique_ptr<HostRecordset> foreign_;
};

}  // namespace vlm::data::ado
