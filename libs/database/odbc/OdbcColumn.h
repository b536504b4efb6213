#pragma once

#include <cstddef>
#include <string>
#include <string_view>

#include "OdbcStatement.h"
#include "values/Value.h"

namespace vlm::data::odbc {

/// How a cell lies in a row's buffer. Amounts come as the decimal digits that the server holds; they never pass through
/// floating point.
enum class CellKind { Boolean, Short, Integer, Big, Double, Decimal, Moment, Text };

/// One column of a result.
struct OdbcColumn {
    std::string name;
    FieldType type = FieldType::Text;
    CellKind kind = CellKind::Text;
    bool unbounded = false;  // text of a length that is not known before it is read
    std::size_t width = 0;   // bytes of a cell, a text's closing zero counted
    std::size_t place = 0;   // of the cell in its row; its length stands right before

    /// Columns count from 1.
    static OdbcColumn Describe(const OdbcStatement& statement, int number);
    /// The form in which the driver writes the cell.
    SQLSMALLINT BufferType() const;
};

/// A number as a server writes it ("-1234.5600", with a point or a comma before the decimals and nothing between the
/// thousands), exact to four decimals; what is beyond rounds half to even. OverflowError or TypeMismatchError names the
/// column.
Currency ExactDecimal(std::string_view digits, std::string_view column);

}  // namespace vlm::data::odbc
