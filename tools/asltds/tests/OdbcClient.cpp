#include "OdbcClient.h"

namespace vlm::host::tds::testing {

namespace {

SQLCHAR* Text(const std::string& text) {
    return reinterpret_cast<SQLCHAR*>(const_cast<char*>(text.c_str()));  // the interface takes no constants
}

}  // namespace

OdbcClient::OdbcClient(int port, const std::string& database, const std::string& more) {
    SQLAllocHandle(SQL_HANDLE_ENV, SQL_NULL_HANDLE, &environment_);
    SQLSetEnvAttr(environment_, SQL_ATTR_ODBC_VERSION, reinterpret_cast<SQLPOINTER>(SQL_OV_ODBC3), 0);
    SQLAllocHandle(SQL_HANDLE_DBC, environment_, &connection_);
    std::string text = "Driver=libtdsodbc.so;Server=127.0.0.1;Port=" + std::to_string(port) + ";Database=" + database +
                       ";ClientCharset=UTF-8;" + more;
    if (more.find("TDS_Version") == std::string::npos) text += ";TDS_Version=7.4";
    if (more.find("UID") == std::string::npos) text += ";UID=prova;PWD=Segreta1!";
    const SQLRETURN result =
        SQLDriverConnect(connection_, nullptr, Text(text), SQL_NTS, nullptr, 0, nullptr, SQL_DRIVER_NOPROMPT);
    if (!SQL_SUCCEEDED(result)) connectError_ = Diagnosis(SQL_HANDLE_DBC, connection_);
    if (SQL_SUCCEEDED(result)) SQLAllocHandle(SQL_HANDLE_STMT, connection_, &statement_);
}

OdbcClient::~OdbcClient() {
    if (statement_ != nullptr) SQLFreeHandle(SQL_HANDLE_STMT, statement_);
    SQLEndTran(SQL_HANDLE_DBC, connection_, SQL_ROLLBACK);
    SQLDisconnect(connection_);
    SQLFreeHandle(SQL_HANDLE_DBC, connection_);
    SQLFreeHandle(SQL_HANDLE_ENV, environment_);
}

std::string OdbcClient::Diagnosis(SQLSMALLINT kind, SQLHANDLE handle) {
    SQLCHAR state[6], text[1000];
    SQLINTEGER number = 0;
    if (!SQL_SUCCEEDED(SQLGetDiagRec(kind, handle, 1, state, &number, text, sizeof text, nullptr))) return "?";
    const std::string whole = reinterpret_cast<const char*>(text);
    return std::to_string(number) + " " + whole.substr(whole.rfind(']') + 1);
}

std::string OdbcClient::Run(const std::string& sql) {
    SQLFreeStmt(statement_, SQL_CLOSE);
    return Answers(SQLExecDirect(statement_, Text(sql), SQL_NTS));
}

std::string OdbcClient::RunBound(const std::string& sql) {
    SQLFreeStmt(statement_, SQL_CLOSE);
    const SQLRETURN prepared = SQLPrepare(statement_, Text(sql), SQL_NTS);
    return Answers(SQL_SUCCEEDED(prepared) ? SQLExecute(statement_) : prepared);
}

int OdbcClient::PreparedColumns(const std::string& sql) {
    SQLFreeStmt(statement_, SQL_CLOSE);
    SQLPrepare(statement_, Text(sql), SQL_NTS);
    SQLSMALLINT columns = -1;
    SQLNumResultCols(statement_, &columns);
    return columns;
}

/// Of a first statement that changed nothing the driver says "no data", too.
std::string OdbcClient::Answers(SQLRETURN result) {
    std::string answers;
    for (std::string before;; before = " / ") {
        if (!SQL_SUCCEEDED(result) && result != SQL_NO_DATA) return answers + before + Error();
        SQLSMALLINT columns = 0;
        SQLNumResultCols(statement_, &columns);
        SQLLEN changed = -1;
        SQLRowCount(statement_, &changed);
        const std::string done = changed < 0 ? "done" : std::to_string(changed) + " changed";
        answers += before + (columns > 0 ? Rows(columns) : done);
        result = SQLMoreResults(statement_);
        if (result == SQL_NO_DATA) return answers;
    }
}

std::string OdbcClient::Rows(SQLSMALLINT columns) {
    std::string rows;
    SQLRETURN result = SQL_SUCCESS;
    while (SQL_SUCCEEDED(result = SQLFetch(statement_))) {
        if (!rows.empty()) rows += ';';
        for (SQLUSMALLINT column = 1; column <= columns; ++column) {
            if (column > 1) rows += '|';
            char cell[9000];
            SQLLEN length = 0;
            SQLGetData(statement_, column, SQL_C_CHAR, cell, sizeof cell, &length);
            rows += length == SQL_NULL_DATA ? "NULL" : cell;
        }
    }
    return result == SQL_NO_DATA ? rows : rows + " ! " + Error();
}

std::string OdbcClient::Describe(const std::string& sql) {
    SQLFreeStmt(statement_, SQL_CLOSE);
    if (!SQL_SUCCEEDED(SQLExecDirect(statement_, Text(sql), SQL_NTS))) return Error();
    std::string described;
    SQLSMALLINT columns = 0;
    SQLNumResultCols(statement_, &columns);
    for (SQLUSMALLINT column = 1; column <= columns; ++column) {
        SQLCHAR name[100], type[100];
        SQLULEN size = 0;
        SQLDescribeCol(statement_, column, name, sizeof name, nullptr, nullptr, &size, nullptr, nullptr);
        SQLColAttribute(statement_, column, SQL_DESC_TYPE_NAME, type, sizeof type, nullptr, nullptr);
        described += reinterpret_cast<const char*>(name) + std::string(" ") + reinterpret_cast<const char*>(type) +
                     "(" + std::to_string(size) + ") ";
    }
    SQLFreeStmt(statement_, SQL_CLOSE);
    return described;
}

void OdbcClient::SetAutocommit(bool on) {
    const SQLULEN value = on ? SQL_AUTOCOMMIT_ON : SQL_AUTOCOMMIT_OFF;
    SQLSetConnectAttr(connection_, SQL_ATTR_AUTOCOMMIT, reinterpret_cast<SQLPOINTER>(value), 0);
}

std::string OdbcClient::PrimaryKeys(const char* database, const char* table) {
    SQLFreeStmt(statement_, SQL_CLOSE);
    const std::string catalog = database == nullptr ? "" : database;
    return Answers(SQLPrimaryKeys(statement_, database == nullptr ? nullptr : Text(catalog), SQL_NTS, nullptr, 0,
                                  Text(table), SQL_NTS));
}

}  // namespace vlm::host::tds::testing
