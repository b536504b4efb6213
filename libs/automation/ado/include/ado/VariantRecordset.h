#pragma once

#include <deque>
#include <string>

#include "automation/Variant.h"
#include "database/Recordset.h"

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

}  // namespace vlm::data::ado
