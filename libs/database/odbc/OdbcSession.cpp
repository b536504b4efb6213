#include "OdbcSession.h"

#include <array>
#include <utility>

namespace vlm::data::odbc {

namespace {

constexpr std::uintptr_t kLoginSeconds = 15;

bool Contains(std::string_view text, std::string_view part) {
    return text::FoldCase(text).find(text::FoldCase(part)) != std::string::npos;
}

/// Drivers that mend a broken connection by themselves are told not to; a data source may lead to one of them.
std::string WithoutRecovery(OdbcText text) {
    const bool mends = Contains(text.ValueOf("Driver"), "ODBC Driver") || !text.ValueOf("DSN").empty() ||
                       !text.ValueOf("FILEDSN").empty();
    if (mends) text.Set("ConnectRetryCount", "0");
    return text.Text();
}

std::string Without(std::string text, const std::vector<std::string>& secrets) {
    for (const std::string& secret : secrets) {
        for (std::size_t at = 0; (at = text.find(secret, at)) != std::string::npos; at += 3) {
            text.replace(at, secret.size(), "***");
        }
    }
    return text;
}

}  // namespace

OdbcSession::OdbcSession(const OdbcText& text)
    : secrets_(text.Secrets()), environment_(SQL_NULL_HANDLE), connection_([this] {
          SQLSetEnvAttr(environment_.Get(), SQL_ATTR_ODBC_VERSION, AttributeValue(SQL_OV_ODBC3), 0);
          return environment_.Get();
      }()) {
    Connect(text);
}

void OdbcSession::Connect(const OdbcText& text) {
    SQLSetConnectAttr(Handle(), SQL_ATTR_LOGIN_TIMEOUT, AttributeValue(kLoginSeconds), 0);
    WideText wide = Wide(WithoutRecovery(text));
    const SQLRETURN result =
        SQLDriverConnectW(Handle(), nullptr, wide.data(), SQL_NTS, nullptr, 0, nullptr, SQL_DRIVER_NOPROMPT);
    if (SQL_SUCCEEDED(result)) {
        connected_ = true;
        return;
    }
    const OdbcDiagnostics said = OdbcDiagnostics::Of(SQL_HANDLE_DBC, Handle());
    throw OdbcError("Il collegamento al server di database non è riuscito: " + Without(said.text, secrets_), said.state,
                    said.nativeCode);
}

OdbcSession::~OdbcSession() {
    if (!connected_) return;
    SQLEndTran(SQL_HANDLE_DBC, Handle(), SQL_ROLLBACK);
    SQLDisconnect(Handle());
}

bool OdbcSession::IsDead() const {
    SQLUINTEGER dead = SQL_CD_FALSE;
    const SQLRETURN result = SQLGetConnectAttr(Handle(), SQL_ATTR_CONNECTION_DEAD, &dead, 0, nullptr);
    return SQL_SUCCEEDED(result) && dead == SQL_CD_TRUE;
}

void OdbcSession::Throw(SQLSMALLINT handleType, SQLHANDLE handle) {
    const OdbcDiagnostics said = OdbcDiagnostics::Of(handleType, handle);
    const std::string text = Without(said.text, secrets_);
    lost_ = lost_ || said.ConnectionFailed() || IsDead();
    throw OdbcError(lost_ ? "La connessione con il server di database è caduta: " + text : text, said.state,
                    said.nativeCode);
}

void OdbcSession::Check(SQLRETURN result, SQLSMALLINT handleType, SQLHANDLE handle) {
    if (result == SQL_SUCCESS || result == SQL_NO_DATA) return;
    if (result == SQL_SUCCESS_WITH_INFO && OdbcDiagnostics::Of(handleType, handle).warning) return;
    Throw(handleType, handle);
}

void OdbcSession::RequireConnected() {
    lost_ = lost_ || IsDead();
    if (lost_) throw OdbcError("La connessione con il server di database è caduta.", "08S01", 0);
}

void OdbcSession::Claim(OdbcReader* reader) {
    if (lost_) RequireConnected();
    OdbcReader* const before = std::exchange(reader_, nullptr);
    if (before != nullptr && before != reader) before->ReadAhead();
    reader_ = reader;
}

void OdbcSession::Release(const OdbcReader* reader) noexcept {
    if (reader_ == reader) reader_ = nullptr;
}

bool OdbcSession::SetAutoCommit(bool on) {
    const SQLPOINTER value = AttributeValue(on ? SQL_AUTOCOMMIT_ON : SQL_AUTOCOMMIT_OFF);
    return SQL_SUCCEEDED(SQLSetConnectAttr(Handle(), SQL_ATTR_AUTOCOMMIT, value, 0));
}

void OdbcSession::BeginTransaction() {
    Claim(nullptr);
    if (!SetAutoCommit(false)) Throw(SQL_HANDLE_DBC, Handle());
}

void OdbcSession::CommitTransaction() {
    Claim(nullptr);
    Check(SQLEndTran(SQL_HANDLE_DBC, Handle(), SQL_COMMIT), SQL_HANDLE_DBC, Handle());
    lost_ = !SetAutoCommit(true);
}

void OdbcSession::RollbackTransaction() {
    try {
        Claim(nullptr);
    } catch (const Error&) {  // the row set that could not be read says so itself
    }
    const bool ended = !lost_ && SQL_SUCCEEDED(SQLEndTran(SQL_HANDLE_DBC, Handle(), SQL_ROLLBACK));
    if (ended && SetAutoCommit(true)) return;
    lost_ = true;
    Throw(SQL_HANDLE_DBC, Handle());
}

std::string OdbcSession::Catalog() {
    std::array<SQLWCHAR, 256> name{};
    SQLINTEGER bytes = 0;
    const SQLRETURN result = SQLGetConnectAttrW(Handle(), SQL_ATTR_CURRENT_CATALOG, name.data(),
                                                static_cast<SQLINTEGER>(sizeof name), &bytes);
    if (!SQL_SUCCEEDED(result)) return {};
    return text::FromUtf16(WideView(name.data()));
}

std::string OdbcSession::Information(SQLUSMALLINT what) {
    std::array<SQLWCHAR, 256> value{};
    const SQLRETURN result = SQLGetInfoW(Handle(), what, value.data(), static_cast<SQLSMALLINT>(sizeof value), nullptr);
    return SQL_SUCCEEDED(result) ? text::FromUtf16(WideView(value.data())) : std::string();
}

}  // namespace vlm::data::odbc
