#pragma once

#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <string_view>

#include "values/Value.h"

namespace vlm::data {

/// A row set. Columns are bound to ordinals (from 0) once, then read by ordinal for every row. Reading a cell when
/// there is no current row, or from a closed row set, throws Error. Opened row sets stand on their first row.
class Recordset {
public:
    virtual ~Recordset() = default;

    virtual int FieldCount() const = 0;
    virtual std::string_view FieldName(int ordinal) const = 0;
    virtual FieldType TypeOf(int ordinal) const = 0;

    /// Names compare without regard to case; the first of several columns of one name. -1 when there is none.
    int FindField(std::string_view name) const;
    /// Throws Error naming the column when there is none.
    int Ordinal(std::string_view name) const;

    virtual bool IsOpen() const = 0;
    virtual bool AtEnd() const = 0;
    virtual void MoveNext() = 0;
    virtual void Close() noexcept = 0;
    /// Moves on to the next row set of a statement that returns several; false (and AtEnd) when there is none.
    virtual bool NextRecordset() { return false; }

    virtual bool IsNull(int ordinal) const = 0;
    /// Null gives "". Valid until the next move. Forms as data::TextOf(Value).
    virtual std::string_view TextOf(int ordinal) const = 0;
    /// Null, empty text and text that is no number give 0.
    virtual double NumberOf(int ordinal) const = 0;
    /// Strict reads: Null gives 0 / nothing; a cell that is no whole number, amount or date throws TypeMismatchError
    /// (OverflowError when it does not fit) naming the column. IntegerOf rounds half to even.
    virtual std::int64_t IntegerOf(int ordinal) const = 0;
    virtual Currency AmountOf(int ordinal) const = 0;
    virtual std::optional<Date> DateOf(int ordinal) const = 0;
    virtual Value ValueOf(int ordinal) const = 0;
    /// DateOf as calendar day and time of day, for the rows of a long run: no serial is made on the way.
    virtual std::optional<Date::Civil> CivilOf(int ordinal) const;

    /// NumberOf rounded half to even; OverflowError names the column.
    std::int16_t Int16Of(int ordinal) const;
    std::int32_t Int32Of(int ordinal) const;
};

using RecordsetPtr = std::unique_ptr<Recordset>;

}  // namespace vlm::data
