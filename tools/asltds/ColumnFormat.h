#pragma once

#include <string>

#include "WireBytes.h"
#include "database/Recordset.h"

namespace vlm::host::tds {

/// Latin letters without regard to case, code page 1252.
inline constexpr std::string_view kLatinCollation("\x09\x04\xD0\x00\x34", 5);

/// How one column of a row set goes over the wire.
class ColumnFormat {
public:
    /// `largeTexts`: texts without a limit go in pieces, as they do from version 7.2 on.
    ColumnFormat(const data::Recordset& rows, int ordinal, bool largeTexts);

    void AddDescription(ByteString& out) const;
    /// The current row's cell. Throws vlm::Error for one that its declared type cannot hold.
    void AddCell(const data::Recordset& rows, ByteString& out) const;

private:
    enum class Kind { Bit, Integer, Float, Money, Decimal, DateTime, Ansi, Wide };

    void TakeTextType(std::string_view declared);
    void AddType(ByteString& out) const;
    void AddNull(ByteString& out) const;
    void AddInteger(const data::Recordset& rows, ByteString& out) const;
    void AddFloat(const data::Recordset& rows, ByteString& out) const;
    void AddMoney(const data::Recordset& rows, ByteString& out) const;
    void AddDateTime(const data::Recordset& rows, ByteString& out) const;
    void AddText(const data::Recordset& rows, ByteString& out) const;

    int ordinal_;
    std::string name_;
    bool largeTexts_;
    Kind kind_ = Kind::Wide;
    int width_ = 0;  // bytes; of a text the most that it has, 0 without a limit
};

}  // namespace vlm::host::tds
