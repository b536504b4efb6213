#pragma once

#include <memory>

#include "database/Recordset.h"

namespace vlm::data {

/// Rows of one table that are changed in place, one at a time: SetValue changes the current row, or the one that AddNew
/// began, and Update writes it at once with the columns that were set. Which rows they are is settled on opening.
///
/// A row that could not be written keeps what was set. Moving on, adding another and closing drop what was set and not
/// written. A row that somebody else has removed meanwhile is an Error. An added row becomes the current one; what the
/// database itself filled in is not read back.
class UpdatableRecordset : public Recordset {
public:
    virtual void AddNew() = 0;
    /// The value is converted to the column's type: TypeMismatchError or OverflowError when it cannot be. Error when
    /// there is neither a current row nor a new one.
    virtual void SetValue(int ordinal, const Value& value) = 0;
    void SetValue(std::string_view name, const Value& value) { SetValue(Ordinal(name), value); }
    /// Does nothing when nothing was added or set.
    virtual void Update() = 0;
    /// Drops what was added or set and not written.
    virtual void CancelUpdate() = 0;
};

using UpdatableRecordsetPtr = std::unique_ptr<UpdatableRecordset>;

/// Rows to be changed that another row set reads.
class ForwardingRecordset : public UpdatableRecordset {
public:
    int FieldCount() const override { return Rows().FieldCount(); }
    std::string_view FieldName(int ordinal) const override { return Rows().FieldName(Checked(ordinal)); }
    FieldType TypeOf(int ordinal) const override { return Rows().TypeOf(Checked(ordinal)); }
    bool IsOpen() const override { return Rows().IsOpen(); }
    bool AtEnd() const override { return Rows().AtEnd(); }

    bool IsNull(int ordinal) const override { return Rows().IsNull(Checked(ordinal)); }
    std::string_view TextOf(int ordinal) const override { return Rows().TextOf(Checked(ordinal)); }
    double NumberOf(int ordinal) const override { return Rows().NumberOf(Checked(ordinal)); }
    std::int64_t IntegerOf(int ordinal) const override { return Rows().IntegerOf(Checked(ordinal)); }
    Currency AmountOf(int ordinal) const override { return Rows().AmountOf(Checked(ordinal)); }
    std::optional<Date> DateOf(int ordinal) const override { return Rows().DateOf(Checked(ordinal)); }
    Value ValueOf(int ordinal) const override { return Rows().ValueOf(Checked(ordinal)); }

protected:
    virtual const Recordset& Rows() const = 0;
    /// The ordinal itself; throws Error for one that is none of FieldCount's.
    int Checked(int ordinal) const;
};

}  // namespace vlm::data
