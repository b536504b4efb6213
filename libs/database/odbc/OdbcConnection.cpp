#include "odbc/OdbcConnection.h"

#include "OdbcHandle.h"
#include "OdbcRecordset.h"
#include "OdbcUpdatableRecordset.h"
#include "database/MemoryRecordset.h"
#include "values/Error.h"
#include "values/Utf8.h"

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

/// Changed rows are counted and long texts come whole, whatever server and driver are set to. An engine of the dialect
/// that does not know such a setting has none to be changed.
constexpr std::string_view kGuards[] = {"SET NOCOUNT OFF", "SET TEXTSIZE 2147483647"};

bool SpeaksTransactSql(OdbcSession& session) {
    const auto holds = [&](SQLUSMALLINT what, std::string_view part) {
        return text::ToLower(session.Information(what)).find(part) != std::string::npos;
    };
    return holds(SQL_DBMS_NAME, "sql server") || holds(SQL_DRIVER_NAME, "tds");
}

}  // namespace

ConnectionPtr OdbcConnection::Connect(std::string_view connectionText) {
    return std::make_shared<OdbcConnection>(OdbcText(connectionText));
}

OdbcConnection::OdbcConnection(OdbcText text)
    : qualifySchema_(TakeDialect(text)),
      database_(text.ValueOf("Database")),
      session_(std::make_shared<OdbcSession>(text)) {
    if (SpeaksTransactSql(*session_)) Prepare();
}

OdbcConnection::~OdbcConnection() = default;

void OdbcConnection::Prepare() {
    Execute(kMonthFirst);
    for (const std::string_view guard : kGuards) {
        try {
            Execute(guard);
        } catch (const OdbcError&) {
            if (session_->Lost()) throw;
        }
    }
}

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
    return OdbcStatement(session_).Change(Statement(sql));
}

UpdatableRecordsetPtr OdbcConnection::OpenForUpdate(std::string_view sql) {
    const std::string statement = Statement(sql);
    TableSelect select = TableSelect::Parse(statement);
    std::unique_ptr<MemoryRecordset> rows = MemoryRecordset::CopyOf(*Open(sql));
    return std::make_unique<OdbcUpdatableRecordset>(session_, std::move(select), std::move(rows));
}

void OdbcConnection::BeginTransaction() {
    if (inTransaction_) throw Error("Una transazione è già aperta.");
    session_->BeginTransaction();
    inTransaction_ = true;
}

void OdbcConnection::CommitTransaction() {
    if (!inTransaction_) throw Error("Nessuna transazione è aperta.");
    session_->CommitTransaction();
    inTransaction_ = false;
}

void OdbcConnection::RollbackTransaction() {
    if (!inTransaction_) throw Error("Nessuna transazione è aperta.");
    inTransaction_ = false;
    session_->RollbackTransaction();
}

}  // namespace vlm::data::odbc
