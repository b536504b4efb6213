#pragma once

#include <memory>

#include "platform/data/Recordset.h"

namespace vlm::data {

/// Rows of one table that are changed in place, one at a time: SetValue changes the current row, or the one that AddNew
/// began, and Update writes it at once with the columns that were set. Moving on without Update drops what was set.
/// A row that somebody else has removed meanwhile is an Error.
class UpdatableRecordset : public Recordset {
public:
    virtual void AddNew() = 0;
    /// The value is converted to the column's type: TypeMismatchError or OverflowError when it cannot be.
    virtual void SetValue(int ordinal, const Value& value) = 0;
    void SetValue(std::string_view name, const Value& value) { SetValue(Ordinal(name), value); }
    virtual void Update() = 0;
};

using UpdatableRecordsetPtr = std::unique_ptr<UpdatableRecordset>;

}  // namespace vlm::data
