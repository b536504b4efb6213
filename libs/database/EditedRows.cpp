#include "database/EditedRows.h"

#include <utility>
#include <vector>

#include "database/SqlTokens.h"
#include "values/Error.h"

namespace vlm::data {

namespace {

/// A token with its spaces gone would join its neighbour: the rest of a statement is put together with blanks.
std::string TakeRest(SqlCursor& cursor) {
    std::string rest;
    while (!cursor.AtEnd()) rest += " " + cursor.Take().source;
    return rest;
}

/// `table`, `schema.table`, `database.schema.table` or `database..table`.
void TakeTable(SqlCursor& cursor, TableSelect& select) {
    std::vector<std::string> parts = {""};
    for (bool more = true; more;) {
        if (cursor.Peek().kind == SqlTokenKind::Name) {
            parts.back() = cursor.Peek().value;
            select.name += cursor.Take().source;
        }
        more = cursor.AcceptSymbol(".");
        if (!more) continue;
        select.name += '.';
        parts.emplace_back();
    }
    if (parts.back().empty() || parts.front().empty() || parts.size() > 3) cursor.Refuse();
    select.table = parts.back();
    if (parts.size() > 1) select.schema = parts[parts.size() - 2];
    if (parts.size() > 2) select.database = parts.front();
}

}  // namespace

TableSelect TableSelect::Parse(std::string_view sql) {
    TableSelect select;
    SqlCursor cursor(Tokenize(sql));
    cursor.ExpectWord("SELECT");
    cursor.ExpectSymbol("*");
    cursor.ExpectWord("FROM");
    TakeTable(cursor, select);
    if (!cursor.AtEnd() && !cursor.IsSymbol(";") && !cursor.Peek().IsAnyWord({"WHERE", "ORDER"})) cursor.Refuse();
    select.rest = TakeRest(cursor);
    return select;
}

void RefuseRows(std::string_view table, std::string_view why) {
    throw Error("Le righe di " + std::string(table) + " non si possono modificare: " + std::string(why) + ".");
}

void ThrowRowGone(std::string_view table) {
    throw Error("La riga della tabella " + std::string(table) + " non c'è più: è stata cancellata da un altro utente.");
}

EditedRows::EditedRows(std::unique_ptr<MemoryRecordset> rows)
    : rows_(std::move(rows)), count_(static_cast<std::size_t>(rows_->RecordCount())) {}

void EditedRows::CancelUpdate() {
    rows_->CancelUpdate();
    adding_ = false;
    changed_.clear();
}

void EditedRows::MoveNext() {
    CancelUpdate();
    rows_->MoveNext();
    ++row_;
}

void EditedRows::AddNew() {
    CancelUpdate();
    rows_->AddNew();
    adding_ = true;
}

void EditedRows::SetValue(int ordinal, const Value& value) {
    rows_->SetValue(Checked(ordinal), value);
    changed_.insert(ordinal);
}

void EditedRows::Update() {
    if (!adding_ && changed_.empty()) return;
    Write(adding_ ? count_ : row_);
    if (adding_) row_ = count_++;
    rows_->Update();
    CancelUpdate();
}

}  // namespace vlm::data
