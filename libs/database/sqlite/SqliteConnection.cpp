#include "sqlite/SqliteConnection.h"

#include <charconv>
#include <sqlite3.h>

#include "SqlExpression.h"
#include "SqlTranslator.h"
#include "SqliteCatalog.h"
#include "SqliteRecordset.h"
#include "SqliteSession.h"
#include "SqliteUpdatableRecordset.h"
#include "database/ConnectionText.h"
#include "values/Error.h"
#include "values/Utf8.h"

namespace vlm::data {

namespace {

constexpr int kBusyMilliseconds = 10000;
constexpr std::string_view kProvider = "SQLite";
constexpr std::string_view kProcedureTable = "StoredProcedure";

std::string Required(const ConnectionText& text, std::string_view key) {
    std::string value = text.ValueOf(key);
    if (value.empty()) throw Error("Nel testo di connessione manca " + std::string(key) + ".");
    return value;
}

int BusyTimeout(const ConnectionText& text) {
    const std::string value = text.ValueOf("Busy Timeout");
    int milliseconds = kBusyMilliseconds;
    if (value.empty()) return milliseconds;
    const auto read = std::from_chars(value.data(), value.data() + value.size(), milliseconds);
    if (read.ec != std::errc() || read.ptr != value.data() + value.size() || milliseconds < 0) {
        throw Error("Nel testo di connessione Busy Timeout non è un numero: " + value);
    }
    return milliseconds;
}

}  // namespace

/// One handle on the databases, and what is known of them.
struct SqliteConnection::Engine {
    explicit Engine(std::shared_ptr<SqliteSession> opened) : session(std::move(opened)), catalog(*session) {}

    std::vector<SqlStatement> Translate(std::string_view sql) {
        session->BeginStatement();
        std::vector<SqlStatement> statements = {SqlTranslator(catalog).Translate(sql)};
        if (statements.front().kind != SqlStatement::Kind::Procedure) return statements;
        return ReadProcedure(statements.front());
    }

    std::vector<SqlStatement> ReadProcedure(const SqlStatement& call) {
        std::vector<SqlStatement> statements;
        for (const std::string& body : ReadBodies(call.sql)) {
            statements.push_back(SqlTranslator(catalog).Translate(body, call.arguments));
            if (statements.back().kind == SqlStatement::Kind::Procedure) RefuseSql(statements.back().sql);
        }
        if (statements.empty()) {
            throw Error("La procedura " + call.sql + " non esiste nel database " + session->Catalog() + ".");
        }
        return statements;
    }

    std::vector<std::string> ReadBodies(const std::string& procedure) {
        std::vector<std::string> bodies;
        const std::string own = catalog.Attach("");
        if (!catalog.HasTable(own, kProcedureTable)) return bodies;
        const std::string sql = "SELECT Body FROM main." + std::string(kProcedureTable) + " WHERE Name = ?1 COLLATE " +
                                std::string(kTextCollation) + " ORDER BY Ordinal";
        const SqliteStatementPtr rows = session->Prepare(sql, {own});
        sqlite3_bind_text(rows.get(), 1, procedure.c_str(), -1, SQLITE_STATIC);
        while (session->Step(rows.get(), {own})) {
            const unsigned char* const body = sqlite3_column_text(rows.get(), 0);
            bodies.emplace_back(body == nullptr ? "" : reinterpret_cast<const char*>(body));
        }
        return bodies;
    }

    std::shared_ptr<SqliteSession> session;
    SqliteCatalog catalog;
};

struct SqliteConnection::Prepared {
    std::shared_ptr<SqliteSession> session;
    std::vector<SqlStatement> statements;
};

ConnectionPtr SqliteConnection::Connect(std::string_view connectionText) {
    const ConnectionText text(connectionText);
    const std::string provider = text.ValueOf("Provider");
    if (!provider.empty() && !text::EqualNoCase(provider, kProvider)) {
        throw Error("Il testo di connessione chiede " + provider + " invece di " + std::string(kProvider) + ".");
    }
    return std::make_shared<SqliteConnection>(Required(text, "Data Source"), Required(text, "Initial Catalog"),
                                              BusyTimeout(text));
}

SqliteConnection::SqliteConnection(const std::string& folder, const std::string& catalog, int busyMilliseconds)
    : folder_(folder), catalog_(catalog), busyMilliseconds_(busyMilliseconds) {
    engines_.push_back(MakeEngine());
}

/// A transaction that is still open is given up also when a row set keeps the session alive.
SqliteConnection::~SqliteConnection() {
    if (Own().InTransaction()) sqlite3_exec(Own().Handle(), "ROLLBACK", nullptr, nullptr, nullptr);
}

std::unique_ptr<SqliteConnection::Engine> SqliteConnection::MakeEngine() const {
    return std::make_unique<Engine>(std::make_shared<SqliteSession>(folder_, catalog_, busyMilliseconds_));
}

SqliteSession& SqliteConnection::Own() const { return *engines_.front()->session; }

std::string SqliteConnection::InitialCatalog() const { return catalog_; }

RecordsetPtr SqliteConnection::Open(std::string_view sql) {
    Prepared prepared = PrepareStatements(sql);
    Begin();
    return std::make_unique<SqliteRecordset>(std::move(prepared.session), std::move(prepared.statements));
}

std::int64_t SqliteConnection::Execute(std::string_view sql) {
    const Prepared prepared = PrepareStatements(sql);
    Begin();
    const SqliteSession& session = *prepared.session;
    std::int64_t changed = 0;
    for (const SqlStatement& each : prepared.statements) {
        const SqliteStatementPtr statement = session.Prepare(each.sql, each.databases);
        while (session.Step(statement.get(), each.databases)) continue;
        if (each.kind == SqlStatement::Kind::Change) changed += sqlite3_changes64(session.Handle());
    }
    return changed;
}

/// On the first engine, which is the one that a transaction sees.
UpdatableRecordsetPtr SqliteConnection::OpenForUpdate(std::string_view sql) {
    Engine& engine = *engines_.front();
    engine.session->BeginStatement();
    auto select = SqliteTableSelect::Translate(sql, engine.catalog);
    Begin();
    return std::make_unique<SqliteUpdatableRecordset>(engine.session, std::move(select));
}

SqliteConnection::Prepared SqliteConnection::PrepareStatements(std::string_view sql) {
    for (const auto& engine : engines_) {
        try {
            return {engine->session, engine->Translate(sql)};
        } catch (const TooManyDatabases&) {
            // What a transaction has changed is seen by its own engine only.
            if (inTransaction_) throw;
        }
    }
    std::unique_ptr<Engine> engine = MakeEngine();
    Prepared prepared = {engine->session, engine->Translate(sql)};
    engines_.push_back(std::move(engine));
    return prepared;
}

/// A reader does not lock: the transaction takes its lock with its first change.
void SqliteConnection::BeginTransaction() {
    if (inTransaction_) throw Error("Una transazione è già aperta.");
    inTransaction_ = true;
    begun_ = false;
}

/// The engine's transaction begins once its first statement is translated: looking a table up reads, and of two that
/// have read and would write the engine refuses one at once, where who writes first waits for the other.
void SqliteConnection::Begin() {
    if (!inTransaction_ || begun_) return;
    Own().Run("BEGIN");
    begun_ = true;
}

void SqliteConnection::CommitTransaction() {
    if (!inTransaction_) throw Error("Nessuna transazione è aperta.");
    if (!begun_) {
        inTransaction_ = false;
        return;
    }
    if (!Own().InTransaction()) {
        inTransaction_ = false;
        throw Error("La transazione è stata annullata dal database " + catalog_ + ".");
    }
    Own().Run("COMMIT");
    inTransaction_ = false;
}

void SqliteConnection::RollbackTransaction() {
    if (!inTransaction_) throw Error("Nessuna transazione è aperta.");
    inTransaction_ = false;
    // After a grave error (a full disk) the engine has rolled back by itself.
    if (Own().InTransaction()) Own().Run("ROLLBACK");
}

}  // namespace vlm::data
