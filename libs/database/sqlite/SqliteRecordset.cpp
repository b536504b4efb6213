#include "SqliteRecordset.h"

#include <charconv>
#include <sqlite3.h>

#include "sqlite/SqliteConnection.h"
#include "values/ColumnConversion.h"
#include "values/Error.h"
#include "values/Number.h"

namespace vlm::data {

namespace {

/// The engine's own memory, valid until the next step.
std::string_view CellText(sqlite3_value* cell) {
    const auto* const bytes = static_cast<const char*>(sqlite3_value_type(cell) == SQLITE_BLOB
                                                           ? sqlite3_value_blob(cell)
                                                           : static_cast<const void*>(sqlite3_value_text(cell)));
    return bytes == nullptr ? std::string_view() : std::string_view(bytes, sqlite3_value_bytes(cell));
}

FieldType TypeOfCell(sqlite3_value* cell) {
    switch (sqlite3_value_type(cell)) {
        case SQLITE_INTEGER:
            return FieldType::BigInt;
        case SQLITE_FLOAT:
            return FieldType::Double;
        default:
            return FieldType::Text;
    }
}

Value StoredText(FieldType type, std::string_view stored) {
    if (type == FieldType::Date) {
        if (const auto date = ParseIsoDate(stored)) return *date;
    }
    return std::string(stored);
}

/// A cell as its column's type shows it. One that does not fit the type stays what it is.
Value ShownValue(FieldType type, sqlite3_value* cell) {
    const int storage = sqlite3_value_type(cell);
    if (storage == SQLITE_TEXT || storage == SQLITE_BLOB) return StoredText(type, CellText(cell));
    const double number = sqlite3_value_double(cell);
    const bool whole = storage == SQLITE_INTEGER;
    try {
        if (type == FieldType::Boolean) return number != 0;
        if (type == FieldType::Date) return ColumnDate(number, {});
        if (type == FieldType::Currency && whole) return ColumnAmount(std::int64_t{sqlite3_value_int64(cell)}, {});
        if (type == FieldType::Currency) return ColumnAmount(number, {});
    } catch (const Error&) {
        return number;
    }
    if (whole && type != FieldType::Double) return std::int64_t{sqlite3_value_int64(cell)};
    return number;
}

}  // namespace

SqliteRecordset::SqliteRecordset(std::shared_ptr<SqliteSession> session, std::vector<SqlStatement> statements)
    : session_(std::move(session)), statements_(std::move(statements)) {
    for (const SqlStatement& each : statements_) session_->Hold(each.databases);
    try {
        NextRecordset();
    } catch (...) {
        Close();
        throw;
    }
}

SqliteRecordset::~SqliteRecordset() { Close(); }

bool SqliteRecordset::NextRecordset() {
    CloseCurrent();
    columns_.clear();
    while (next_ < statements_.size()) {
        const SqlStatement& statement = statements_[next_++];
        statement_ = session_->Prepare(statement.sql, statement.databases);
        hasRow_ = session_->Step(statement_.get(), statement.databases);
        if (sqlite3_column_count(statement_.get()) > 0) {
            BindColumns();
            return true;
        }
        CloseCurrent();
    }
    return false;
}

void SqliteRecordset::BindColumns() {
    const int count = sqlite3_column_count(statement_.get());
    const std::vector<SqlKind>& known = statements_[next_ - 1].columns;
    columns_.resize(static_cast<std::size_t>(count));
    for (int ordinal = 0; ordinal < count; ++ordinal) {
        Column& column = columns_[static_cast<std::size_t>(ordinal)];
        column.name = sqlite3_column_name(statement_.get(), ordinal);
        const char* const declared = sqlite3_column_decltype(statement_.get(), ordinal);
        if (declared != nullptr && *declared != '\0') {
            column.declared = declared;
            column.type = FieldTypeOf(declared);
        } else if (static_cast<std::size_t>(ordinal) < known.size() && known[ordinal] == SqlKind::Date) {
            column.type = FieldType::Date;
        } else if (hasRow_) {
            column.type = TypeOfCell(sqlite3_column_value(statement_.get(), ordinal));
        }
    }
}

void SqliteRecordset::MoveNext() {
    if (!hasRow_) throw Error("Non ci sono altre righe.");
    hasRow_ = false;
    hasRow_ = session_->Step(statement_.get(), statements_[next_ - 1].databases);
}

void SqliteRecordset::CloseCurrent() noexcept {
    hasRow_ = false;
    statement_.reset();
}

void SqliteRecordset::Close() noexcept {
    CloseCurrent();
    for (const SqlStatement& each : statements_) session_->Release(each.databases);
    statements_.clear();
    next_ = 0;
}

const SqliteRecordset::Column& SqliteRecordset::At(int ordinal) const {
    if (static_cast<std::size_t>(ordinal) >= columns_.size()) {
        throw Error("La colonna numero " + std::to_string(ordinal) + " non esiste nelle righe lette.");
    }
    return columns_[static_cast<std::size_t>(ordinal)];
}

std::string_view SqliteRecordset::FieldName(int ordinal) const { return At(ordinal).name; }

FieldType SqliteRecordset::TypeOf(int ordinal) const { return At(ordinal).type; }

sqlite3_value* SqliteRecordset::Cell(int ordinal) const {
    if (!hasRow_) throw Error(IsOpen() ? "Non c'è una riga corrente." : "L'insieme di righe non è aperto.");
    At(ordinal);
    return sqlite3_column_value(statement_.get(), ordinal);
}

bool SqliteRecordset::IsNull(int ordinal) const { return sqlite3_value_type(Cell(ordinal)) == SQLITE_NULL; }

std::string_view SqliteRecordset::TextOf(int ordinal) const {
    sqlite3_value* const cell = Cell(ordinal);
    const Column& column = columns_[static_cast<std::size_t>(ordinal)];
    switch (sqlite3_value_type(cell)) {
        case SQLITE_NULL:
            return {};
        case SQLITE_TEXT:
            if (column.type == FieldType::Date) break;
            return {reinterpret_cast<const char*>(sqlite3_value_text(cell)),
                    static_cast<std::size_t>(sqlite3_value_bytes(cell))};
        case SQLITE_BLOB:
            if (column.type != FieldType::Date) return CellText(cell);
            break;
        case SQLITE_INTEGER:
            if (column.type != FieldType::Boolean && column.type != FieldType::Date) {
                char digits[24];
                const auto end = std::to_chars(digits, digits + sizeof digits, sqlite3_value_int64(cell)).ptr;
                return column.text.assign(digits, end);
            }
            break;
        default:
            break;
    }
    return column.text = data::TextOf(ShownValue(column.type, cell));
}

double SqliteRecordset::NumberOf(int ordinal) const {
    sqlite3_value* const cell = Cell(ordinal);
    const FieldType type = columns_[static_cast<std::size_t>(ordinal)].type;
    switch (sqlite3_value_type(cell)) {
        case SQLITE_NULL:
            return 0;
        case SQLITE_INTEGER:
        case SQLITE_FLOAT: {
            const double number = sqlite3_value_double(cell);
            return type == FieldType::Boolean && number != 0 ? -1 : number;
        }
        default:
            break;
    }
    if (type == FieldType::Date) {
        const auto date = ParseIsoDate(CellText(cell));
        return date ? date->Serial() : 0;
    }
    return text::ParseNumber(CellText(cell)).value_or(0);
}

std::int64_t SqliteRecordset::IntegerOf(int ordinal) const {
    sqlite3_value* const cell = Cell(ordinal);
    const Column& column = columns_[static_cast<std::size_t>(ordinal)];
    switch (sqlite3_value_type(cell)) {
        case SQLITE_NULL:
            return 0;
        case SQLITE_INTEGER: {
            const std::int64_t whole = sqlite3_value_int64(cell);
            return column.type == FieldType::Boolean && whole != 0 ? -1 : whole;
        }
        case SQLITE_FLOAT:
            return ColumnInteger(sqlite3_value_double(cell), column.name);
        default:
            break;
    }
    if (column.type == FieldType::Date) return ColumnInteger(DateOf(ordinal)->Serial(), column.name);
    return ColumnInteger(CellText(cell), column.name);
}

Currency SqliteRecordset::AmountOf(int ordinal) const {
    sqlite3_value* const cell = Cell(ordinal);
    const Column& column = columns_[static_cast<std::size_t>(ordinal)];
    switch (sqlite3_value_type(cell)) {
        case SQLITE_NULL:
            return {};
        case SQLITE_INTEGER:
            return ColumnAmount(std::int64_t{sqlite3_value_int64(cell)}, column.name);
        case SQLITE_FLOAT:
            return ColumnAmount(sqlite3_value_double(cell), column.name);
        default:
            return ColumnAmount(CellText(cell), column.name);
    }
}

std::optional<Date> SqliteRecordset::DateOf(int ordinal) const {
    sqlite3_value* const cell = Cell(ordinal);
    const Column& column = columns_[static_cast<std::size_t>(ordinal)];
    switch (sqlite3_value_type(cell)) {
        case SQLITE_NULL:
            return std::nullopt;
        case SQLITE_INTEGER:
        case SQLITE_FLOAT:
            return ColumnDate(sqlite3_value_double(cell), column.name);
        default:
            return ColumnDate(CellText(cell), column.name);
    }
}

std::optional<Date::Civil> SqliteRecordset::CivilOf(int ordinal) const {
    sqlite3_value* const cell = Cell(ordinal);
    if (sqlite3_value_type(cell) == SQLITE_TEXT) {
        const Column& column = columns_[static_cast<std::size_t>(ordinal)];
        const std::string_view text = CellText(cell);
        if (text == column.dateText && !text.empty()) return column.date;
        const std::optional<Date::Civil> civil = ParseIsoCivil(text);
        if (civil) {
            column.dateText = text;
            column.date = *civil;
            return civil;
        }
    }
    return Recordset::CivilOf(ordinal);  // other forms, and what cannot be read
}

Value SqliteRecordset::ValueOf(int ordinal) const {
    sqlite3_value* const cell = Cell(ordinal);
    if (sqlite3_value_type(cell) == SQLITE_NULL) return {};
    return ShownValue(columns_[static_cast<std::size_t>(ordinal)].type, cell);
}

std::string_view DeclaredTypeOf(const Recordset& rows, int ordinal) {
    return dynamic_cast<const SqliteRecordset&>(rows).DeclaredType(ordinal);
}

}  // namespace vlm::data
