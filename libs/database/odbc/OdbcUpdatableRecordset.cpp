#include "OdbcUpdatableRecordset.h"

#include <array>

#include "OdbcParameters.h"
#include "values/Error.h"
#include "values/Utf8.h"

namespace vlm::data::odbc {

namespace {

constexpr SQLUSMALLINT kColumnName = 4;  // of the driver's answer

/// Null where the name is empty: whichever it is.
struct Argument {
    explicit Argument(const std::string& name) : text(Wide(name)) {}
    SQLWCHAR* Pointer() { return text.empty() ? nullptr : text.data(); }
    SQLSMALLINT Size() const { return static_cast<SQLSMALLINT>(text.size()); }

    WideText text;
};

/// The names of the columns of a table's primary key, in the key's order; none for a table without one.
std::vector<std::string> PrimaryKeyOf(const OdbcStatement& statement, const TableSelect& table) {
    Argument catalog(table.database), schema(table.schema), name(table.table);
    statement.Check(SQLPrimaryKeysW(statement.Handle(), catalog.Pointer(), catalog.Size(), schema.Pointer(),
                                    schema.Size(), name.Pointer(), name.Size()));
    std::vector<std::string> columns;
    while (statement.Fetch()) {
        std::array<SQLWCHAR, 256> column{};
        SQLLEN length = 0;
        statement.Check(
            SQLGetData(statement.Handle(), kColumnName, SQL_C_WCHAR, column.data(), sizeof column, &length));
        columns.push_back(text::FromUtf16(WideView(column.data())));
    }
    return columns;
}

}  // namespace

OdbcUpdatableRecordset::OdbcUpdatableRecordset(std::shared_ptr<OdbcSession> session, TableSelect select,
                                               std::unique_ptr<MemoryRecordset> rows)
    : EditedRows(std::move(rows)), session_(std::move(session)), select_(std::move(select)) {
    session_->Claim(nullptr);
    quote_ = text::Trim(session_->Information(SQL_IDENTIFIER_QUOTE_CHAR));
    for (const std::string& name : PrimaryKeyOf(OdbcStatement(session_), select_)) {
        keyColumns_.push_back(Rows().Ordinal(name));
    }
    if (keyColumns_.empty()) RefuseRows(select_.table, "è una vista o una tabella senza chiave primaria");
    for (; !AtEnd(); Stored().MoveNext()) keys_.push_back(KeyInHand());
    Stored().MoveFirst();
}

std::string OdbcUpdatableRecordset::Quoted(std::string_view name) const {
    std::string quoted = quote_;
    for (const char c : name) quoted.append(quote_ == std::string_view(&c, 1) ? 2 : 1, c);
    return quoted + quote_;
}

std::vector<Value> OdbcUpdatableRecordset::KeyInHand() const {
    std::vector<Value> key;
    for (const int ordinal : keyColumns_) {
        key.push_back(Rows().ValueOf(ordinal));
        if (data::IsNull(key.back())) return {};
    }
    return key;
}

std::string OdbcUpdatableRecordset::Insertion() const {
    if (Changed().empty()) return "INSERT INTO " + select_.name + " DEFAULT VALUES";
    std::string names, places;
    for (const int ordinal : Changed()) {
        names += (names.empty() ? "" : ", ") + Quoted(FieldName(ordinal));
        places += places.empty() ? "?" : ", ?";
    }
    return "INSERT INTO " + select_.name + " (" + names + ") VALUES (" + places + ")";
}

std::string OdbcUpdatableRecordset::Change() const {
    std::string pairs, key;
    for (const int ordinal : Changed()) pairs += (pairs.empty() ? "" : ", ") + Quoted(FieldName(ordinal)) + " = ?";
    for (const int ordinal : keyColumns_) key += (key.empty() ? "" : " AND ") + Quoted(FieldName(ordinal)) + " = ?";
    return "UPDATE " + select_.name + " SET " + pairs + " WHERE " + key;
}

void OdbcUpdatableRecordset::Write(std::size_t row) {
    if (!Adding() && keys_[row].empty()) {
        throw Error("La riga aggiunta a " + select_.table +
                    " va riletta prima di modificarla: la chiave è del server.");
    }
    session_->Claim(nullptr);
    const OdbcStatement statement(session_);
    OdbcParameters parameters(statement);
    for (const int ordinal : Changed()) parameters.Add(Rows().ValueOf(ordinal), TypeOf(ordinal));
    for (std::size_t i = 0; !Adding() && i < keyColumns_.size(); ++i) {
        parameters.Add(keys_[row][i], TypeOf(keyColumns_[i]));
    }
    if (statement.Change(Adding() ? Insertion() : Change()) == 0) ThrowRowGone(select_.table);
    keys_.resize(std::max(keys_.size(), row + 1));
    keys_[row] = KeyInHand();
}

}  // namespace vlm::data::odbc
