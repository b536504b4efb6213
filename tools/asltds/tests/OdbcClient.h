#pragma once

#include <sql.h>
#include <sqlext.h>
#include <string>

namespace vlm::host::tds::testing {

/// The interface takes no constants.
inline SQLCHAR* Text(const std::string& text) { return reinterpret_cast<SQLCHAR*>(const_cast<char*>(text.c_str())); }

/// A client of the server by way of the system's driver. What fails gives the server's number and text.
class OdbcClient {
public:
    explicit OdbcClient(int port, const std::string& database = "Studio0012", const std::string& more = {}) {
        SQLAllocHandle(SQL_HANDLE_ENV, SQL_NULL_HANDLE, &environment_);
        SQLSetEnvAttr(environment_, SQL_ATTR_ODBC_VERSION, reinterpret_cast<SQLPOINTER>(SQL_OV_ODBC3), 0);
        SQLAllocHandle(SQL_HANDLE_DBC, environment_, &connection_);
        std::string text = "Driver=libtdsodbc.so;Server=127.0.0.1;Port=" + std::to_string(port) +
                           ";Database=" + database + ";ClientCharset=UTF-8;" + more;
        if (more.find("TDS_Version") == std::string::npos) text += ";TDS_Version=7.4";
        if (more.find("UID") == std::string::npos) text += ";UID=prova;PWD=Segreta1!";
        const SQLRETURN result =
            SQLDriverConnect(connection_, nullptr, Text(text), SQL_NTS, nullptr, 0, nullptr, SQL_DRIVER_NOPROMPT);
        if (!SQL_SUCCEEDED(result)) connectError_ = Diagnosis(SQL_HANDLE_DBC, connection_);
        if (SQL_SUCCEEDED(result)) SQLAllocHandle(SQL_HANDLE_STMT, connection_, &statement_);
    }
    OdbcClient(const OdbcClient&) = delete;
    OdbcClient& operator=(const OdbcClient&) = delete;
    ~OdbcClient() {
        if (statement_ != nullptr) SQLFreeHandle(SQL_HANDLE_STMT, statement_);
        SQLEndTran(SQL_HANDLE_DBC, connection_, SQL_ROLLBACK);
        SQLDisconnect(connection_);
        SQLFreeHandle(SQL_HANDLE_DBC, connection_);
        SQLFreeHandle(SQL_HANDLE_ENV, environment_);
    }

    /// "" when the connection stands.
    const std::string& ConnectError() const { return connectError_; }
    SQLHSTMT Statement() const { return statement_; }

    /// The answers of a statement one after another, parted by " / ": rows parted by ";" with cells parted by "|", "n
    /// changed", "done", or the error's number and text.
    std::string Run(const std::string& sql) {
        SQLFreeStmt(statement_, SQL_CLOSE);
        return Answers(SQLExecDirect(statement_, Text(sql), SQL_NTS));
    }
    /// As Run, with parameters that were bound to `Statement`. A query's columns are told before it runs, too.
    std::string RunBound(const std::string& sql, SQLSMALLINT columns = 0) {
        SQLFreeStmt(statement_, SQL_CLOSE);
        if (!SQL_SUCCEEDED(SQLPrepare(statement_, Text(sql), SQL_NTS))) return Diagnosis(SQL_HANDLE_STMT, statement_);
        SQLSMALLINT told = 0;
        if (columns > 0) SQLNumResultCols(statement_, &told);
        if (told != columns) return "columns: " + std::to_string(told);
        return Answers(SQLExecute(statement_));
    }
    /// The columns that a statement gives, each as "Name type(size)".
    std::string Describe(const std::string& sql) {
        SQLFreeStmt(statement_, SQL_CLOSE);
        SQLExecDirect(statement_, Text(sql), SQL_NTS);
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
    void TakeTransactions() {
        SQLSetConnectAttr(connection_, SQL_ATTR_AUTOCOMMIT, reinterpret_cast<SQLPOINTER>(SQL_AUTOCOMMIT_OFF), 0);
    }
    void End(SQLSMALLINT completion) { SQLEndTran(SQL_HANDLE_DBC, connection_, completion); }

private:
    /// What a call failed with: "2627 text".
    static std::string Diagnosis(SQLSMALLINT kind, SQLHANDLE handle) {
        SQLCHAR state[6], text[1000];
        SQLINTEGER number = 0;
        if (!SQL_SUCCEEDED(SQLGetDiagRec(kind, handle, 1, state, &number, text, sizeof text, nullptr))) return "?";
        const std::string whole = reinterpret_cast<const char*>(text);
        return std::to_string(number) + " " + whole.substr(whole.rfind(']') + 1);
    }
    /// Of a first statement that changed nothing the driver says "no data", too.
    std::string Answers(SQLRETURN result) {
        std::string answers;
        for (std::string before;; before = " / ") {
            if (!SQL_SUCCEEDED(result) && result != SQL_NO_DATA) {
                return answers + before + Diagnosis(SQL_HANDLE_STMT, statement_);
            }
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
    std::string Rows(SQLSMALLINT columns) {
        std::string rows;
        SQLRETURN result = SQL_SUCCESS;
        while (SQL_SUCCEEDED(result = SQLFetch(statement_))) {
            if (!rows.empty()) rows += ';';
            for (SQLUSMALLINT column = 1; column <= columns; ++column) {
                char cell[9000];
                SQLLEN length = 0;
                SQLGetData(statement_, column, SQL_C_CHAR, cell, sizeof cell, &length);
                rows += std::string(column > 1 ? "|" : "") + (length == SQL_NULL_DATA ? "NULL" : cell);
            }
        }
        return result == SQL_NO_DATA ? rows : rows + " ! " + Diagnosis(SQL_HANDLE_STMT, statement_);
    }

    SQLHENV environment_ = nullptr;
    SQLHDBC connection_ = nullptr;
    SQLHSTMT statement_ = nullptr;
    std::string connectError_;
};

}  // namespace vlm::host::tds::testing
