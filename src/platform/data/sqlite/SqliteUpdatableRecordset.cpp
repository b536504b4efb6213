#include "platform/data/sqlite/SqliteUpdatableRecordset.h"

#include <sqlite3.h>

#include "platform/Error.h"
#include "platform/data/SqlTokens.h"
#include "platform/data/sqlite/SqliteRecordset.h"

namespace vlm::data {

namespace {

/// A value as it is stored: dates as ISO text, amounts as numbers, truth values as 1 and 0.
struct Binding {
    sqlite3_stmt* statement;
    int place;

    int operator()(std::monostate) const { return sqlite3_bind_null(statement, place); }
    int operator()(bool value) const { return sqlite3_bind_int(statement, place, value ? 1 : 0); }
    int operator()(std::int64_t value) const { return sqlite3_bind_int64(statement, place, value); }
    int operator()(double value) const { return sqlite3_bind_double(statement, place, value); }
    int operator()(Currency value) const { return sqlite3_bind_double(statement, place, value.ToDouble()); }
    int operator()(Date value) const { return (*this)(IsoDate(value)); }
    int operator()(const std::string& value) const {
        return sqlite3_bind_text64(statement, place, value.data(), value.size(), SQLITE_TRANSIENT, SQLITE_UTF8);
    }
};

void Bind(sqlite3_stmt* statement, int place, const Value& value) {
    if (std::visit(Binding{statement, place}, value) != SQLITE_OK) throw std::bad_alloc();
}

}  // namespace

SqliteUpdatableRecordset::SqliteUpdatableRecordset(std::shared_ptr<SqliteSession> session, SqliteTableSelect select)
    : session_(std::move(session)), select_(std::move(select)) {
    SqliteRecordset read(session_, {select_.statement});
    rows_ = MemoryRecordset::CopyOf(read);
    for (; !rows_->AtEnd(); rows_->MoveNext()) numbers_.push_back(rows_->IntegerOf(FieldCount()));
    rows_->MoveFirst();
    session_->Hold(select_.statement.databases);
}

void SqliteUpdatableRecordset::CancelUpdate() {
    rows_->CancelUpdate();
    adding_ = false;
    set_.clear();
}

void SqliteUpdatableRecordset::MoveNext() {
    CancelUpdate();
    rows_->MoveNext();
    ++row_;
}

void SqliteUpdatableRecordset::Close() noexcept {
    if (!rows_->IsOpen()) return;
    rows_->Close();
    session_->Release(select_.statement.databases);
}

void SqliteUpdatableRecordset::AddNew() {
    CancelUpdate();
    rows_->AddNew();
    adding_ = true;
}

void SqliteUpdatableRecordset::SetValue(int ordinal, const Value& value) {
    rows_->SetValue(Checked(ordinal), value);
    set_.insert(ordinal);
}

/// The columns set are ?1, ?2, ... in order; the row's number comes after them.
std::string SqliteUpdatableRecordset::Statement() const {
    std::string names, places, pairs;
    int place = 0;
    for (const int ordinal : set_) {
        const std::string comma = place == 0 ? "" : ", ";
        const std::string name = SqlQuotedName(rows_->FieldName(ordinal));
        const std::string parameter = "?" + std::to_string(++place);
        names += comma + name;
        places += comma + parameter;
        pairs += comma + name + " = " + parameter;
    }
    const std::string returning = " RETURNING " + select_.rowId;
    if (adding_ && set_.empty()) return "INSERT INTO " + select_.target + " DEFAULT VALUES" + returning;
    if (adding_) return "INSERT INTO " + select_.target + " (" + names + ") VALUES (" + places + ")" + returning;
    return "UPDATE " + select_.target + " SET " + pairs + " WHERE " + select_.rowId + " = ?" +
           std::to_string(place + 1) + returning;
}

/// Gives the row's number, which is another one when its key is kept as such and was changed.
std::int64_t SqliteUpdatableRecordset::Write() const {
    const std::vector<std::string>& databases = select_.statement.databases;
    const SqliteStatementPtr statement = session_->Prepare(Statement(), databases);
    int place = 0;
    for (const int ordinal : set_) Bind(statement.get(), ++place, rows_->ValueOf(ordinal));
    if (!adding_) Bind(statement.get(), ++place, numbers_[row_]);
    if (!session_->Step(statement.get(), databases)) {
        throw Error("La riga della tabella " + select_.table + " non c'è più: è stata cancellata da un altro utente.");
    }
    const std::int64_t number = sqlite3_column_int64(statement.get(), 0);
    while (session_->Step(statement.get(), databases)) continue;
    return number;
}

void SqliteUpdatableRecordset::Update() {
    if (!adding_ && set_.empty()) return;
    const std::int64_t number = Write();
    if (adding_) {
        row_ = numbers_.size();
        numbers_.push_back(number);
    } else {
        numbers_[row_] = number;
    }
    rows_->Update();
    CancelUpdate();
}

}  // namespace vlm::data
