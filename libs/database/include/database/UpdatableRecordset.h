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

}  // namespace vlm::data
