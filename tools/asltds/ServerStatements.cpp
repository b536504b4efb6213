#include "ServerStatements.h"

#include "Dialect.h"
#include "RemoteCalls.h"
#include "values/Utf8.h"

namespace vlm::host::tds {

namespace {

using data::SqlCursor;
using data::SqlTextLiteral;
using data::SqlTokenKind;

constexpr const char* kProcedureTable =
    "CREATE TABLE IF NOT EXISTS StoredProcedure (Name VARCHAR(128), Ordinal INT, Body TEXT)";

std::string TakeName(SqlCursor& cursor) {
    if (cursor.Peek().kind != SqlTokenKind::Name) cursor.Refuse();
    return cursor.Take().value;
}

/// What stands after IF EXISTS, if that is there.
bool AcceptIfExists(SqlCursor& cursor) {
    if (!cursor.AcceptWord("IF")) return false;
    cursor.ExpectWord("EXISTS");
    return true;
}

/// "3/31/2011", and "2011-03-31", which takes its order from the same setting.
bool IsDateWithMonthFirst(std::string_view text) {
    const auto digits = [&] {
        std::size_t count = 0;
        for (; !text.empty() && text.front() >= '0' && text.front() <= '9'; ++count) text.remove_prefix(1);
        return count;
    };
    const std::size_t first = digits();
    const char separator = text.empty() ? '\0' : text.front();
    if (first == 0 || (separator != '/' && separator != '-')) return false;
    text.remove_prefix(1);
    const std::size_t second = digits();
    if (second == 0 || !text.starts_with(separator)) return false;
    text.remove_prefix(1);
    return digits() > 0;
}

Command CommandOf(const Tokens& statement) {
    if (statement.front().IsWord("INSERT")) return kInsertCommand;
    return statement.front().IsWord("UPDATE") ? kUpdateCommand : kDeleteCommand;
}

}  // namespace

// The first that fits counts. A statement that begins with none of these words calls a procedure.
const ServerStatements::Beginning ServerStatements::kBeginnings[] = {
    {"SELECT", "", &ServerStatements::RunQuery},
    {"INSERT", "", &ServerStatements::RunChange},
    {"UPDATE", "", &ServerStatements::RunChange},
    {"DELETE", "", &ServerStatements::RunChange},
    {"SET", "", &ServerStatements::RunSet},
    {"USE", "", &ServerStatements::RunUse},
    {"BEGIN", "TRAN", &ServerStatements::RunBegin},
    {"BEGIN", "TRANSACTION", &ServerStatements::RunBegin},
    {"BEGIN", "", &ServerStatements::RunBlock},
    {"COMMIT", "", &ServerStatements::RunCommit},
    {"ROLLBACK", "", &ServerStatements::RunRollback},
    {"IF", "", &ServerStatements::RunIf},
    {"CREATE", "DATABASE", &ServerStatements::CreateDatabase},
    {"DROP", "DATABASE", &ServerStatements::DropDatabase},
    {"CREATE", "PROCEDURE", &ServerStatements::CreateProcedure},
    {"CREATE", "PROC", &ServerStatements::CreateProcedure},
    {"CREATE", "OR", &ServerStatements::CreateProcedure},
    {"DROP", "PROCEDURE", &ServerStatements::DropProcedure},
    {"DROP", "PROC", &ServerStatements::DropProcedure},
    {"CREATE", "", &ServerStatements::RunDefinition},
    {"DROP", "", &ServerStatements::RunDefinition},
    {"ALTER", "TABLE", &ServerStatements::RunDefinition},
    {"ALTER", "DATABASE", &ServerStatements::AlterDatabase},
    {"EXEC", "", &ServerStatements::RunCall},
    {"EXECUTE", "", &ServerStatements::RunCall},
};

void ServerStatements::RunBatch(const Tokens& batch, Done what) {
    for (const Tokens& statement : SplitBatch(batch)) Run(statement, what);
}

void ServerStatements::Describe(const Tokens& batch) {
    const std::vector<Tokens> statements = SplitBatch(batch);
    if (statements.size() != 1 || !statements.front().front().IsWord("SELECT")) return;
    rows_->Describe(*database_->Connection().Open(Sql(statements.front())));
}

void ServerStatements::Run(const Tokens& statement, Done what) {
    for (const Beginning& each : kBeginnings) {
        if (!statement.front().IsWord(each.first)) continue;
        if (*each.second == '\0' || statement[1].IsWord(each.second)) return (this->*each.run)(statement, what);
    }
    if (BeginsStatement(statement.front())) data::RefuseSql(statement.front().source);
    RunCall(statement, what);
}

/// As the adapter reads it. The adapter takes the month before the day; where that is not agreed, such a date is none.
std::string ServerStatements::Sql(const Tokens& statement) const {
    for (const data::SqlToken& token : statement) {
        if (!dayFirst_ || token.kind != SqlTokenKind::Text || !IsDateWithMonthFirst(token.value)) continue;
        throw ServerError(kDateOutOfRange, "La data '" + token.value + "' non è valida: il giorno viene prima.");
    }
    return Joined(WithSystemValues(statement, *folder_, *database_));
}

/// Of all the options those that change what the server does; the others are accepted.
void ServerStatements::RunSet(const Tokens& statement, Done what) {
    SqlCursor cursor(statement);
    cursor.ExpectWord("SET");
    if (cursor.Peek().kind != SqlTokenKind::Name) cursor.Refuse();
    const bool on = cursor.Peek(1).IsWord("ON");
    if (cursor.IsWord("IMPLICIT_TRANSACTIONS")) database_->SetImplicitTransactions(on);
    if (cursor.IsWord("NOCOUNT")) counts_ = !on;
    if (cursor.IsWord("DATEFORMAT")) dayFirst_ = !cursor.Peek(1).IsWord("mdy");
    writer_->Close(what);
}

void ServerStatements::RunUse(const Tokens& statement, Done what) {
    SqlCursor cursor(statement);
    cursor.ExpectWord("USE");
    database_->Use(TakeName(cursor));
    writer_->Close(what);
}

void ServerStatements::RunBegin(const Tokens&, Done what) {
    database_->Begin();
    writer_->Close(what);
}

void ServerStatements::RunCommit(const Tokens&, Done what) {
    database_->Commit();
    writer_->Close(what);
}

void ServerStatements::RunRollback(const Tokens&, Done what) {
    database_->Rollback();
    writer_->Close(what);
}

void ServerStatements::RunBlock(const Tokens& statement, Done what) {
    RunBatch(Part(statement, 1, statement.size() - 2), what);
}

/// IF condition statement [ELSE statement]
void ServerStatements::RunIf(const Tokens& statement, Done what) {
    SqlCursor cursor(statement);
    cursor.ExpectWord("IF");
    cursor.SkipTo([&] { return BeginsStatement(cursor.Peek()); });
    const std::size_t then = cursor.Position();
    if (cursor.AtEnd()) cursor.Refuse();
    const Tokens condition = Part(statement, 1, then);
    const std::vector<Tokens> branches = SplitBatch(Part(statement, then, statement.size() - 1));
    const bool holds = !database_->Connection().Open("SELECT 1 WHERE " + Sql(condition))->AtEnd();
    const std::size_t branch = holds ? 0 : 2;  // ELSE stands between the two
    branch < branches.size() ? Run(branches[branch], what) : writer_->Close(what);
}

void ServerStatements::RunQuery(const Tokens& statement, Done what) {
    const std::string sql = Sql(statement);
    const bool onData = std::any_of(statement.begin(), statement.end(), [](const auto& t) { return t.IsWord("FROM"); });
    if (onData) database_->BeginImplicitly();
    rows_->Send(*database_->Connection().Open(sql), what, counts_);
}

void ServerStatements::RunChange(const Tokens& statement, Done what) {
    const std::string sql = Sql(statement);
    database_->BeginImplicitly();
    const std::int64_t changed = database_->Connection().Execute(sql);
    writer_->Close(what, CommandOf(statement), counts_ ? std::optional(changed) : std::nullopt);
}

void ServerStatements::RunDefinition(const Tokens& statement, Done what) {
    database_->BeginImplicitly();
    database_->Connection().Execute(EngineDefinition(statement));
    writer_->Close(what);
}

void ServerStatements::CreateDatabase(const Tokens& statement, Done what) {
    SqlCursor cursor(statement);
    cursor.Take();
    cursor.Take();
    folder_->Create(TakeName(cursor));
    writer_->Close(what);
}

void ServerStatements::DropDatabase(const Tokens& statement, Done what) {
    SqlCursor cursor(statement);
    cursor.Take();
    cursor.Take();
    const bool mayBeMissing = AcceptIfExists(cursor);
    const std::string name = TakeName(cursor);
    if (text::EqualNoCase(name, database_->Name())) {
        throw ServerError(kDropUnknown, "Il database " + name + " è in uso e non si può eliminare.");
    }
    if (!mayBeMissing || !folder_->Find(name).empty()) folder_->Drop(name);
    writer_->Close(what);
}

/// Options of a database are accepted and change nothing here: every one can be eliminated whoever uses it.
void ServerStatements::AlterDatabase(const Tokens& statement, Done what) {
    SqlCursor cursor(statement);
    cursor.Take();
    cursor.Take();
    const std::string name = TakeName(cursor);
    cursor.ExpectWord("SET");
    if (folder_->Find(name).empty()) throw ServerError(kUnknownDatabase, "Il database " + name + " non esiste.");
    writer_->Close(what);
}

void ServerStatements::CreateProcedure(const Tokens& statement, Done what) {
    const ProcedureDefinition definition = ProcedureDefinition::Parse(statement);
    data::Connection& connection = database_->Connection();
    connection.Execute(kProcedureTable);
    const std::string name = SqlTextLiteral(definition.name);
    const bool known = !connection.Open("SELECT Name FROM StoredProcedure WHERE Name = " + name)->AtEnd();
    if (known && !definition.replaces) {
        throw ServerError(kObjectExists, "La procedura " + definition.name + " esiste già.");
    }
    if (known) connection.Execute("DELETE FROM StoredProcedure WHERE Name = " + name);
    int ordinal = 0;
    for (const std::string& body : definition.bodies) {
        connection.Execute("INSERT INTO StoredProcedure (Name, Ordinal, Body) VALUES (" + name + ", " +
                           std::to_string(++ordinal) + ", " + SqlTextLiteral(body) + ")");
    }
    writer_->Close(what);
}

void ServerStatements::DropProcedure(const Tokens& statement, Done what) {
    SqlCursor cursor(statement);
    cursor.Take();
    cursor.Take();
    const bool mayBeMissing = AcceptIfExists(cursor);
    const std::string name = TakeName(cursor);
    data::Connection& connection = database_->Connection();
    connection.Execute(kProcedureTable);
    const std::int64_t dropped = connection.Execute("DELETE FROM StoredProcedure WHERE Name = " + SqlTextLiteral(name));
    if (dropped == 0 && !mayBeMissing) throw ServerError(kDropUnknown, "La procedura " + name + " non esiste.");
    writer_->Close(what);
}

void ServerStatements::RunCall(const Tokens& statement, Done) {
    calls_->Run(Call::Parse(WithSystemValues(statement, *folder_, *database_)));
}

void ServerStatements::RunProcedure(data::Connection& connection, const std::string& call) {
    database_->BeginImplicitly();
    rows_->Send(*connection.Open(call), Done::InProcedure, counts_);
}

}  // namespace vlm::host::tds
