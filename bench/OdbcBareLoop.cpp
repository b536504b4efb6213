#include "OdbcBareLoop.h"

#include <sql.h>
#include <sqlext.h>
#include <stdexcept>
#include <vector>

namespace vlm::bench {

namespace {

/// The statement of the library, for the month that takes every service.
constexpr const char* kSelection =
    "SELECT VwPrestazionePerASL.*,Aldra..Comune.CodiceISTAT, Aldra..TipoEsenzione.IDPosizioneTicket FROM "
    "VwPrestazionePerASL LEFT JOIN Residenza ON (VwPrestazionePerASL.IDPaziente = Residenza.IDPaziente AND "
    "Residenza.IDTipoResidenza = 1) LEFT JOIN Aldra..Comune ON Residenza.IDComune = Aldra..Comune.IDComune LEFT JOIN "
    "Aldra..Esenzione ON VwPrestazionePerASL.IDPartecipazioneSpesa = Aldra..Esenzione.IDEsenzione LEFT JOIN "
    "Aldra..TipoEsenzione ON Aldra..Esenzione.IDTipoEsenzione = Aldra..TipoEsenzione.IDTipoEsenzione WHERE "
    "((YEAR(DataAiFiniConvenzione) = 2011 AND MONTH(DataAiFiniConvenzione) = 3 AND (ElaborataASL = 0 OR ElaborataASL "
    "IS NULL)) OR (DataAiFiniConvenzione < '3/1/2011' AND IDPosizioneContabile <> 1 AND (ElaborataASL IS NULL OR "
    "ElaborataASL = 0))) ORDER BY CodiceBranca, DataAiFiniConvenzione, IDParcella";

constexpr std::size_t kRows = 64;  // of a block

void Check(SQLRETURN result, const char* what) {
    if (!SQL_SUCCEEDED(result)) throw std::runtime_error(std::string(what) + " failed");
}

struct Column {
    SQLSMALLINT type;
    std::size_t width;
    std::vector<char> cells;
    std::vector<SQLLEN> lengths;
};

Column ColumnOf(SQLHSTMT statement, SQLUSMALLINT number) {
    SQLSMALLINT type = 0, ignored = 0;
    SQLULEN size = 0;
    Check(SQLDescribeCol(statement, number, nullptr, 0, &ignored, &type, &size, &ignored, &ignored), "describing");
    Column column = {SQL_C_WCHAR, (size + 1) * sizeof(SQLWCHAR), {}, {}};
    if (type == SQL_TYPE_TIMESTAMP) column = {SQL_C_TYPE_TIMESTAMP, sizeof(SQL_TIMESTAMP_STRUCT), {}, {}};
    if (type == SQL_INTEGER) column = {SQL_C_SLONG, sizeof(SQLINTEGER), {}, {}};
    if (type == SQL_SMALLINT) column = {SQL_C_SSHORT, sizeof(SQLSMALLINT), {}, {}};
    if (type == SQL_BIT) column = {SQL_C_BIT, 1, {}, {}};
    if (type == SQL_DECIMAL) column = {SQL_C_CHAR, 48, {}, {}};
    column.cells.resize(column.width * kRows);
    column.lengths.resize(kRows);
    return column;
}

}  // namespace

std::int64_t FetchServices(const std::string& connectionText) {
    SQLHENV environment = nullptr;
    SQLHDBC connection = nullptr;
    SQLHSTMT statement = nullptr;
    Check(SQLAllocHandle(SQL_HANDLE_ENV, SQL_NULL_HANDLE, &environment), "environment");
    SQLSetEnvAttr(environment, SQL_ATTR_ODBC_VERSION, reinterpret_cast<SQLPOINTER>(SQL_OV_ODBC3), 0);
    Check(SQLAllocHandle(SQL_HANDLE_DBC, environment, &connection), "connection");
    std::string text = connectionText;
    Check(SQLDriverConnect(connection, nullptr, reinterpret_cast<SQLCHAR*>(text.data()), SQL_NTS, nullptr, 0, nullptr,
                           SQL_DRIVER_NOPROMPT),
          "connecting");
    Check(SQLAllocHandle(SQL_HANDLE_STMT, connection, &statement), "statement");
    std::string sql = kSelection;
    Check(SQLExecDirect(statement, reinterpret_cast<SQLCHAR*>(sql.data()), SQL_NTS), "selecting");
    SQLSMALLINT count = 0;
    Check(SQLNumResultCols(statement, &count), "counting");
    SQLSetStmtAttr(statement, SQL_ATTR_ROW_ARRAY_SIZE, reinterpret_cast<SQLPOINTER>(kRows), 0);
    SQLULEN fetched = 0;
    SQLSetStmtAttr(statement, SQL_ATTR_ROWS_FETCHED_PTR, &fetched, 0);
    std::vector<Column> columns;
    for (SQLUSMALLINT number = 1; number <= count; ++number) columns.push_back(ColumnOf(statement, number));
    for (SQLUSMALLINT number = 1; number <= count; ++number) {
        Column& column = columns[number - 1];
        Check(SQLBindCol(statement, number, column.type, column.cells.data(), static_cast<SQLLEN>(column.width),
                         column.lengths.data()),
              "binding");
    }
    std::int64_t rows = 0;
    SQLRETURN result = SQL_SUCCESS;
    while (SQL_SUCCEEDED(result = SQLFetch(statement))) rows += static_cast<std::int64_t>(fetched);
    if (result != SQL_NO_DATA) throw std::runtime_error("fetching failed");
    SQLFreeHandle(SQL_HANDLE_STMT, statement);
    SQLDisconnect(connection);
    SQLFreeHandle(SQL_HANDLE_DBC, connection);
    SQLFreeHandle(SQL_HANDLE_ENV, environment);
    return rows;
}

}  // namespace vlm::bench
