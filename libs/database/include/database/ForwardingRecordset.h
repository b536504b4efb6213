#pragma once

#include "database/UpdatableRecordset.h"

namespace vlm::data {

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
