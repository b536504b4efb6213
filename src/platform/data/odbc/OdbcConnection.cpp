#include "platform/data/odbc/OdbcConnection.h"

#include "platform/Error.h"
#include "platform/data/MemoryRecordset.h"
#include "platform/data/odbc/OdbcRecordset.h"
#include "platform/data/odbc/OdbcUpdatableRecordset.h"
#include "platform/data/odbc/SchemaQualifier.h"
#include "platform/text/Utf8.h"

namespace vlm::data::odbc {

namespace {

constexpr std::string_view kDialectKey = "Dialect";
constexpr std::string_view kQualifySchema = "QualifySchema";

bool TakeDialect(OdbcText& text) {
    const std::string dialect = text.Take(kDialectKey);
    if (!dialect.empty() && !text::EqualNoCase(dialect, kQualifySchema)) {
        throw Error("Nel testo di connessione ODBC Dialect può essere solo " + std::string(kQualifySchema) + ".");
    }
    return !dialect.empty();
}

/// The system's date literals have the month first, whatever language the login has.
constexpr std::string_view kMonthFirst = "SET DATEFORMAT mdy";

bool SpeaksTransactSql(OdbcSession& session) {
    return session.Information(SQL_DBMS_NAME).find("SQL Server") != std::string::npos;
}

}  // namespace

ConnectionPtr OdbcConnection::Connect(std::string_view connectionText) {
    return std::make_shared<OdbcConnection>(OdbcText(connectionText));
}

OdbcConnection::OdbcConnection(OdbcText text)
    : qualifySchema_(TakeDialect(text)),
      database_(text.ValueOf("Database")),
      session_(std::make_shared<OdbcSession>(text)) {
    if (SpeaksTransactSql(*session_)) Execute(kMonthFirst);
}

OdbcConnection::~OdbcConnection() = default;

bool OdbcConnection::IsOpen() const { return !session_->Lost(); }

/// As the server tells it; drivers of single files do not.
std::string OdbcConnection::InitialCatalog() const {
    const std::string catalog = session_->Lost() ? std::string() : session_->Catalog();
    return catalog.empty() ? database_ : catalog;
}

std::string OdbcConnection::Statement(std::string_view sql) const {
    return qualifySchema_ ? WithSchema(sql) : std::string(sql);
}

RecordsetPtr OdbcConnection::Open(std::string_view sql) {
    return std::make_unique<OdbcRecordset>(session_, Statement(sql));
}

std::int64_t OdbcConnection::Execute(std::string_view sql) {
    session_->Claim(nullptr);
    const OdbcStatement statement(session_);
    statement.Execute(Statement(sql));
    std::int64_t changed = 0;
    do {
        if (statement.ColumnCount() == 0) changed += statement.ChangedRows();
    } while (statement.NextResult());
    return changed;
}

UpdatableRecordsetPtr OdbcConnection::OpenForUpdate(std::string_view sql) {
    const std::string statement = Statement(sql);
    TableSelect select = TableSelect::Parse(statement);
    std::unique_ptr<MemoryRecordset> rows = MemoryRecordset::CopyOf(*Open(sql));
    return std::make_unique<OdbcUpdatableRecordset>(session_, std::move(select), std::move(rows));
}

void OdbcConnection::BeginTransaction() {
    if (inTransaction_) throw Error("Una transazione è già aperta.");
    session_->SetAutoCommit(false);
    inTransaction_ = true;
}

/// A commit that fails leaves a transaction to be rolled back.
void OdbcConnection::EndTransaction(short how) {
    session_->EndTransaction(how);
    inTransaction_ = false;
    session_->SetAutoCommit(true);
}

void OdbcConnection::CommitTransaction() {
    if (!inTransaction_) throw Error("Nessuna transazione è aperta.");
    EndTransaction(SQL_COMMIT);
}

void OdbcConnection::RollbackTransaction() {
    if (!inTransaction_) throw Error("Nessuna transazione è aperta.");
    inTransaction_ = false;
    EndTransaction(SQL_ROLLBACK);
}

}  // namespace vlm::data::odbc
