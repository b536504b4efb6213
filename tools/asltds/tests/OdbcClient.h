#pragma once

#include <sql.h>
#include <sqlext.h>
#include <string>
#include <vector>

namespace vlm::host::tds::testing {

/// A client of the server by way of the system's driver. What fails gives the server's number and text.
class OdbcClient {
public:
    explicit OdbcClient(int port, const std::string& database = "Studio0012", const std::string& more = {});
    OdbcClient(const OdbcClient&) = delete;
    OdbcClient& operator=(const OdbcClient&) = delete;
    ~OdbcClient();

    /// "" when the connection stands.
    const std::string& ConnectError() const { return connectError_; }
    /// The answers of a statement one after another, parted by " / ": rows parted by ";" with cells parted by "|", "n
    /// changed", "done", or the error's number and text.
    std::string Run(const std::string& sql);
    /// As Run, with parameters that were bound to `Statement`.
    std::string RunBound(const std::string& sql);
    /// How many columns a statement will give, told before it runs.
    int PreparedColumns(const std::string& sql);
    /// The columns that a statement gives, each as "Name type(size)".
    std::string Describe(const std::string& sql);
    void SetAutocommit(bool on);
    void End(SQLSMALLINT completion) { SQLEndTran(SQL_HANDLE_DBC, connection_, completion); }

    SQLHSTMT Statement() const { return statement_; }
    /// What the statement failed with: "2627 text".
    std::string Error() const { return Diagnosis(SQL_HANDLE_STMT, statement_); }
    std::string PrimaryKeys(const char* database, const char* table);

private:
    static std::string Diagnosis(SQLSMALLINT kind, SQLHANDLE handle);
    std::string Answers(SQLRETURN result);
    std::string Rows(SQLSMALLINT columns);

    SQLHENV environment_ = nullptr;
    SQLHDBC connection_ = nullptr;
    SQLHSTMT statement_ = nullptr;
    std::string connectError_;
};

}  // namespace vlm::host::tds::testing
