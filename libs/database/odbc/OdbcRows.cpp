#include "OdbcRows.h"

#include <algorithm>
#include <array>
#include <cstring>
#include <utility>

#include "values/ColumnConversion.h"
#include "values/Number.h"

namespace vlm::data::odbc {

namespace {

constexpr std::size_t kBlockBytes = std::size_t{48} << 10;  // what a processor keeps close at hand
constexpr std::size_t kBlockRows = 512;
constexpr std::size_t kUnit = sizeof(std::uint64_t);

std::size_t Aligned(std::size_t bytes) { return (bytes + kUnit - 1) / kUnit * kUnit; }

}  // namespace

OdbcRows::OdbcRows(std::shared_ptr<OdbcStatement> statement) : statement_(std::move(statement)) {
    const int count = statement_->ColumnCount();
    for (int number = 1; number <= count; ++number) columns_.push_back(OdbcColumn::Describe(*statement_, number));
    shown_.resize(columns_.size());
    LayOut();
    Bind();
    Fetch();
}

/// Each cell behind its length, both where the processor wants them.
void OdbcRows::LayOut() {
    const auto unbounded =
        std::find_if(columns_.begin(), columns_.end(), [](const auto& each) { return each.unbounded; });
    bound_ = static_cast<std::size_t>(unbounded - columns_.begin());
    for (OdbcColumn& column : columns_) {
        column.place = rowSize_ + Aligned(sizeof(SQLLEN));
        rowSize_ = column.place + Aligned(column.width);
    }
    const bool inBlocks = bound_ == columns_.size();
    const std::size_t rows = inBlocks ? std::clamp<std::size_t>(kBlockBytes / rowSize_, 1, kBlockRows) : 1;
    buffer_.resize(rows * rowSize_ / kUnit);
    statuses_.resize(rows);
}

void OdbcRows::Bind() {
    const SQLHANDLE handle = statement_->Handle();
    statement_->Check(SQLFreeStmt(handle, SQL_UNBIND));
    statement_->Check(SQLSetStmtAttr(handle, SQL_ATTR_ROW_BIND_TYPE, AttributeValue(rowSize_), 0));
    statement_->Check(SQLSetStmtAttr(handle, SQL_ATTR_ROW_ARRAY_SIZE, AttributeValue(statuses_.size()), 0));
    statement_->Check(SQLSetStmtAttr(handle, SQL_ATTR_ROW_STATUS_PTR, statuses_.data(), 0));
    statement_->Check(SQLSetStmtAttr(handle, SQL_ATTR_ROWS_FETCHED_PTR, &rows_, 0));
    for (std::size_t ordinal = 0; ordinal < bound_; ++ordinal) {
        const OdbcColumn& column = columns_[ordinal];
        char* const cell = reinterpret_cast<char*>(buffer_.data()) + column.place;
        statement_->Check(SQLBindCol(handle, static_cast<SQLUSMALLINT>(ordinal + 1), column.BufferType(), cell,
                                     static_cast<SQLLEN>(column.width), &Length(ordinal)));
    }
}

void OdbcRows::MoveNext() {
    if (AtEnd()) throw Error("Le righe lette sono finite.");
    ++rowNumber_;
    if (++row_ == rows_) Fetch();
}

void OdbcRows::Fetch() {
    row_ = rows_ = 0;
    ++rowNumber_;
    if (!statement_->Fetch()) {
        rows_ = 0;
        return;
    }
    // One bad row of a block is only a warning for the others.
    const auto bad = std::find(statuses_.begin(), statuses_.begin() + static_cast<std::ptrdiff_t>(rows_),
                               static_cast<SQLUSMALLINT>(SQL_ROW_ERROR));
    if (bad != statuses_.begin() + static_cast<std::ptrdiff_t>(rows_)) {
        rows_ = 0;
        statement_->Check(SQL_ERROR);
    }
    ReadUnbound();
}

void OdbcRows::KeepTexts() { handedOut_ = std::exchange(shown_, std::vector<Shown>(columns_.size())); }

void OdbcRows::Close() noexcept {
    statement_.reset();
    row_ = rows_ = 0;
}

/// The columns from the first one of unknown length on.
void OdbcRows::ReadUnbound() {
    for (std::size_t ordinal = bound_; ordinal < columns_.size(); ++ordinal) {
        OdbcColumn& column = columns_[ordinal];
        if (column.unbounded) {
            ReadUnbounded(ordinal);
            continue;
        }
        char* const cell = reinterpret_cast<char*>(buffer_.data()) + column.place;
        statement_->Check(SQLGetData(statement_->Handle(), static_cast<SQLUSMALLINT>(ordinal + 1), column.BufferType(),
                                     cell, static_cast<SQLLEN>(column.width), &Length(ordinal)));
    }
}

/// In pieces, until the driver has no more.
void OdbcRows::ReadUnbounded(std::size_t ordinal) {
    std::array<SQLWCHAR, 4096> piece;
    constexpr SQLLEN kPieceBytes = sizeof piece - sizeof(SQLWCHAR);  // its closing zero does not count
    WideText whole;
    SQLLEN length = 0;
    for (;;) {
        const SQLRETURN result =
            statement_->Check(SQLGetData(statement_->Handle(), static_cast<SQLUSMALLINT>(ordinal + 1), SQL_C_WCHAR,
                                         piece.data(), sizeof piece, &length));
        if (result == SQL_NO_DATA || length == SQL_NULL_DATA) break;
        const bool more = length == SQL_NO_TOTAL || length > kPieceBytes;
        whole.append(piece.data(), static_cast<std::size_t>(more ? kPieceBytes : length) / sizeof(SQLWCHAR));
        if (!more) break;
    }
    const bool null = length == SQL_NULL_DATA && whole.empty();
    Length(ordinal) = null ? SQL_NULL_DATA : 0;
    shown_[ordinal] = {null ? std::string() : text::FromUtf16(WideView(whole)), rowNumber_};
}

SQLLEN& OdbcRows::Length(std::size_t ordinal) {
    return *reinterpret_cast<SQLLEN*>(reinterpret_cast<char*>(buffer_.data()) + columns_[ordinal].place -
                                      Aligned(sizeof(SQLLEN)));
}

std::string_view OdbcRows::FieldName(int ordinal) const { return Column(ordinal).name; }

FieldType OdbcRows::TypeOf(int ordinal) const { return Column(ordinal).type; }

const OdbcColumn& OdbcRows::Column(int ordinal) const {
    if (ordinal >= 0 && ordinal < FieldCount()) return columns_[static_cast<std::size_t>(ordinal)];
    throw Error("La colonna numero " + std::to_string(ordinal) + " non esiste nelle righe lette.");
}

const char* OdbcRows::Content(const OdbcColumn& column) const {
    return reinterpret_cast<const char*>(buffer_.data()) + row_ * rowSize_ + column.place;
}

template <typename T>
T OdbcRows::Load(const OdbcColumn& column) const {
    T value;
    std::memcpy(&value, Content(column), sizeof value);
    return value;
}

SQLLEN OdbcRows::LengthOf(const OdbcColumn& column) const {
    SQLLEN length = 0;
    std::memcpy(&length, Content(column) - Aligned(sizeof(SQLLEN)), sizeof length);
    return length;
}

bool OdbcRows::IsNull(int ordinal) const { return IsNull(Cell(ordinal)); }

std::string_view OdbcRows::Digits(const OdbcColumn& column) const { return Content(column); }

/// The cell in UTF-8. A text that was cut to its column's declared width is an error, not a shorter text.
std::string_view OdbcRows::WideCell(int ordinal, const OdbcColumn& column) const {
    Shown& shown = shown_[static_cast<std::size_t>(ordinal)];
    if (shown.row == rowNumber_) return shown.text;
    const SQLLEN bytes = LengthOf(column);
    if (bytes == SQL_NO_TOTAL || bytes > static_cast<SQLLEN>(column.width - sizeof(SQLWCHAR))) {
        throw Error("Il testo della colonna " + column.name + " è più lungo di quanto il database dichiara.");
    }
    shown.text.clear();
    if (bytes > 0) {
        text::AppendFromUtf16(WideView(reinterpret_cast<const SQLWCHAR*>(Content(column)),
                                       static_cast<std::size_t>(bytes) / sizeof(SQLWCHAR)),
                              shown.text);
    }
    shown.row = rowNumber_;
    return shown.text;
}

Date::Civil OdbcRows::Moment(const OdbcColumn& column) const {
    const auto moment = Load<SQL_TIMESTAMP_STRUCT>(column);
    return {moment.year, moment.month, moment.day, moment.hour, moment.minute, moment.second};
}

Date OdbcRows::DateAt(const OdbcColumn& column) const {
    const Date::Civil civil = Moment(column);
    const std::optional<Date> date = Date::FromCivil(civil);
    if (!date) ThrowMismatch("anno " + std::to_string(civil.year), column.name, "una data");
    return *date;
}

Value OdbcRows::ValueOf(int ordinal) const {
    const OdbcColumn& column = Cell(ordinal);
    if (IsNull(column)) return {};
    switch (column.kind) {
        case CellKind::Boolean:
            return Load<SQLCHAR>(column) != 0;
        case CellKind::Short:
            return std::int64_t{Load<SQLSMALLINT>(column)};
        case CellKind::Integer:
            return std::int64_t{Load<SQLINTEGER>(column)};
        case CellKind::Big:
            return std::int64_t{Load<SQLBIGINT>(column)};
        case CellKind::Double:
            return double{Load<SQLDOUBLE>(column)};
        case CellKind::Decimal:
            return ExactDecimal(Digits(column), column.name);
        case CellKind::Moment:
            return DateAt(column);
        case CellKind::Text:
            break;
    }
    return std::string(WideCell(ordinal, column));
}

std::string_view OdbcRows::TextOf(int ordinal) const {
    const OdbcColumn& column = Cell(ordinal);
    if (IsNull(column)) return {};
    if (column.kind == CellKind::Text) return WideCell(ordinal, column);
    Shown& shown = shown_[static_cast<std::size_t>(ordinal)];
    if (shown.row != rowNumber_) shown.text = data::TextOf(ValueOf(ordinal));
    shown.row = rowNumber_;
    return shown.text;
}

std::optional<std::int64_t> OdbcRows::WholeCell(const OdbcColumn& column) const {
    switch (column.kind) {
        case CellKind::Short:
            return Load<SQLSMALLINT>(column);
        case CellKind::Integer:
            return Load<SQLINTEGER>(column);
        case CellKind::Big:
            return Load<SQLBIGINT>(column);
        default:
            return std::nullopt;
    }
}

double OdbcRows::NumberOf(int ordinal) const {
    const OdbcColumn& column = Cell(ordinal);
    if (IsNull(column)) return 0;
    if (const auto whole = WholeCell(column)) return static_cast<double>(*whole);
    if (column.kind != CellKind::Text) return data::NumberOf(ValueOf(ordinal));
    return text::ParseNumber(WideCell(ordinal, column)).value_or(0);
}

std::int64_t OdbcRows::IntegerOf(int ordinal) const {
    const OdbcColumn& column = Cell(ordinal);
    if (IsNull(column)) return 0;
    if (const auto whole = WholeCell(column)) return *whole;
    if (column.kind == CellKind::Text) return ColumnInteger(WideCell(ordinal, column), column.name);
    return ColumnInteger(ValueOf(ordinal), column.name);
}

Currency OdbcRows::AmountOf(int ordinal) const {
    const OdbcColumn& column = Cell(ordinal);
    if (IsNull(column)) return {};
    if (column.kind == CellKind::Decimal) return ExactDecimal(Digits(column), column.name);
    if (column.kind == CellKind::Text) return ColumnAmount(WideCell(ordinal, column), column.name);
    return data::AmountOf(ValueOf(ordinal), column.name);
}

std::optional<Date> OdbcRows::DateOf(int ordinal) const {
    const OdbcColumn& column = Cell(ordinal);
    if (IsNull(column)) return std::nullopt;
    if (column.kind == CellKind::Text) return ColumnDate(WideCell(ordinal, column), column.name);
    return data::DateOf(ValueOf(ordinal), column.name);
}

std::optional<Date::Civil> OdbcRows::CivilOf(int ordinal) const {
    const OdbcColumn& column = Cell(ordinal);
    if (column.kind != CellKind::Moment || IsNull(column)) return Recordset::CivilOf(ordinal);
    return Moment(column);
}

}  // namespace vlm::data::odbc
