#include "RemoteCalls.h"

#include <charconv>

#include "values/Utf8.h"

namespace vlm::host::tds {

namespace {

using data::SqlCursor;
using data::SqlTextLiteral;
using data::SqlToken;
using data::SqlTokenKind;

constexpr std::uint64_t kByNumber = 0xFFFF;

/// Procedures that a message names by number.
constexpr std::pair<int, const char*> kNumbers[] = {
    {10, "sp_executesql"}, {11, "sp_prepare"}, {12, "sp_execute"}, {13, "sp_prepexec"}, {15, "sp_unprepare"},
};

std::string NameOf(int number) {
    for (const auto& [known, name] : kNumbers) {
        if (known == number) return name;
    }
    throw ServerError(kUnknownProcedure, "La procedura di sistema numero " + std::to_string(number) + " non esiste.");
}

/// "Database.owner.Name" and shorter forms.
void TakeName(SqlCursor& cursor, Call& call) {
    std::vector<std::string> parts;
    do {
        const bool empty = cursor.IsSymbol(".");  // "Database..Name"
        if (!empty && cursor.Peek().kind != SqlTokenKind::Name) cursor.Refuse();
        parts.push_back(empty ? std::string() : cursor.Take().value);
    } while (cursor.AcceptSymbol("."));
    call.name = parts.back();
    if (parts.size() == 3) call.database = parts.front();
    if (parts.size() > 3) data::RefuseSql(call.name);
}

Parameter TakeArgument(SqlCursor& cursor) {
    Parameter parameter;
    if (cursor.AcceptSymbol("@")) {
        parameter.name = cursor.Take().value;
        cursor.ExpectSymbol("=");
    }
    const bool negative = cursor.AcceptSymbol("-");
    const SqlToken token = cursor.Take();
    parameter.isText = token.kind == SqlTokenKind::Text;
    if (token.kind == SqlTokenKind::Number) {
        parameter.value = (negative ? "-" : "") + token.value;
    } else if (parameter.isText && !negative) {
        parameter.value = token.value;
    } else if (negative || !token.IsWord("NULL")) {
        data::RefuseSql(token.source);
    }
    return parameter;
}

/// The parameter of that name, else the one at that place; "" for none.
std::string TextParameter(const Call& call, std::string_view name, std::size_t place) {
    for (const Parameter& each : call.parameters) {
        if (text::EqualNoCase(each.name, name)) return each.value.value_or("");
    }
    const bool placed = place < call.parameters.size() && call.parameters[place].name.empty();
    return placed ? call.parameters[place].value.value_or("") : std::string();
}

int HandleIn(const Call& call) {
    const std::string digits = call.parameters.front().value.value_or("");
    int handle = 0;
    std::from_chars(digits.data(), digits.data() + digits.size(), handle);
    return handle;
}

std::vector<Parameter> ValuesFrom(const Call& call, std::size_t first) {
    return {call.parameters.begin() + static_cast<std::ptrdiff_t>(std::min(first, call.parameters.size())),
            call.parameters.end()};
}

Tokens TokensOf(const Parameter& parameter) { return data::Tokenize(parameter.value.value_or("")); }

}  // namespace

Call Call::Parse(const Tokens& statement) {
    SqlCursor cursor(statement);
    Call call;
    if (!cursor.AcceptWord("EXEC")) cursor.AcceptWord("EXECUTE");
    TakeName(cursor, call);
    while (!cursor.AtEnd()) {
        if (!call.parameters.empty()) cursor.ExpectSymbol(",");
        call.parameters.push_back(TakeArgument(cursor));
    }
    return call;
}

Call Call::Read(ByteReader& reader, bool largeTexts) {
    Call call;
    const std::uint64_t length = reader.Number(2);
    if (length == kByNumber) {
        call.name = NameOf(static_cast<int>(reader.Number(2)));
    } else {
        SqlCursor cursor(data::Tokenize(reader.Wide(length)));
        TakeName(cursor, call);
    }
    reader.Take(2);  // options
    while (!reader.AtEnd()) {
        const auto next = static_cast<unsigned char>(reader.Rest().front());
        if (next == 0xFF || next == 0x80) {  // another call follows
            reader.Take(1);
            break;
        }
        call.parameters.push_back(ReadParameter(reader, largeTexts));
    }
    return call;
}

const RemoteCalls::Procedure RemoteCalls::kProcedures[] = {
    {"sp_executesql", 1, &RemoteCalls::ExecuteSql},      {"sp_prepare", 3, &RemoteCalls::Prepare},
    {"sp_prepexec", 3, &RemoteCalls::PrepareAndExecute}, {"sp_execute", 1, &RemoteCalls::ExecutePrepared},
    {"sp_unprepare", 1, &RemoteCalls::Unprepare},        {"sp_pkeys", 1, &RemoteCalls::ListPrimaryKeys},
    {"sp_tables", 0, &RemoteCalls::ListTables},
};

void RemoteCalls::Run(const Call& call) {
    Handler run = &RemoteCalls::RunInDatabase;
    for (const Procedure& each : kProcedures) {
        if (!text::EqualNoCase(each.name, call.name)) continue;
        if (call.parameters.size() < each.parameters) {
            throw ServerError(kOther, "Alla procedura " + call.name + " manca un parametro.");
        }
        run = each.run;
    }
    (this->*run)(call);
    writer_->Close(Done::Procedure);
}

void RemoteCalls::RunInDatabase(const Call& call) {
    std::string sql = "EXEC " + data::SqlQuotedName(call.name);
    for (std::size_t at = 0; at < call.parameters.size(); ++at) {
        sql += (at == 0 ? " " : ", ") + call.parameters[at].Literal().source;
    }
    RunQuery(call, sql);
    writer_->ReturnStatus(0);
}

void RemoteCalls::RunQuery(const Call& call, const std::string& sql) {
    const bool here = call.database.empty() || text::EqualNoCase(call.database, database_->Name());
    if (here) return statements_->RunProcedure(database_->Connection(), sql);
    const data::ConnectionPtr other = folder_->Open(call.database);
    statements_->RunProcedure(*other, sql);
}

/// sp_executesql statement, definitions, value, ...
void RemoteCalls::ExecuteSql(const Call& call) {
    Tokens statement = TokensOf(call.parameters[0]);
    if (call.parameters.size() > 1) {
        statement = WithParameters(std::move(statement), TokensOf(call.parameters[1]), ValuesFrom(call, 2));
    }
    statements_->RunBatch(statement, Done::InProcedure);
    writer_->ReturnStatus(0);
}

/// sp_prepare handle, definitions, statement
void RemoteCalls::Prepare(const Call& call) {
    const int handle = Keep(call);
    const Prepared& prepared = prepared_.at(handle);
    const std::vector<Parameter> nulls(prepared.definitions.size());
    statements_->Describe(WithParameters(prepared.statement, prepared.definitions, nulls));
    writer_->ReturnStatus(0);
    writer_->ReturnHandle(handle);
}

/// sp_prepexec handle, definitions, statement, value, ...
void RemoteCalls::PrepareAndExecute(const Call& call) {
    const int handle = Keep(call);
    RunPrepared(handle, call, 3);
    writer_->ReturnStatus(0);
    writer_->ReturnHandle(handle);
}

/// sp_execute handle, value, ...
void RemoteCalls::ExecutePrepared(const Call& call) {
    RunPrepared(HandleIn(call), call, 1);
    writer_->ReturnStatus(0);
}

void RemoteCalls::Unprepare(const Call& call) {
    prepared_.erase(HandleIn(call));
    writer_->ReturnStatus(0);
}

int RemoteCalls::Keep(const Call& call) {
    prepared_[++lastHandle_] = {TokensOf(call.parameters[1]), TokensOf(call.parameters[2])};
    return lastHandle_;
}

void RemoteCalls::RunPrepared(int handle, const Call& call, std::size_t firstValue) {
    const auto known = prepared_.find(handle);
    if (known == prepared_.end()) {
        throw ServerError(kOther, "L'istruzione preparata numero " + std::to_string(handle) + " non esiste.");
    }
    const Prepared& prepared = known->second;
    statements_->RunBatch(WithParameters(prepared.statement, prepared.definitions, ValuesFrom(call, firstValue)),
                          Done::InProcedure);
}

void RemoteCalls::ListPrimaryKeys(const Call& call) {
    Call elsewhere = call;
    const std::string database = TextParameter(call, "table_qualifier", 2);
    if (!database.empty()) elsewhere.database = database;
    const std::string shown = elsewhere.database.empty() ? database_->Name() : elsewhere.database;
    const std::string table = SqlTextLiteral(TextParameter(call, "table_name", 0));
    RunQuery(elsewhere, "WITH k AS (SELECT name, pk FROM pragma_table_info(" + table + ") WHERE pk > 0) SELECT " +
                            SqlTextLiteral(shown) + " AS TABLE_QUALIFIER, 'dbo' AS TABLE_OWNER, " + table +
                            " AS TABLE_NAME, name AS COLUMN_NAME, CAST(pk AS INT) AS KEY_SEQ, " +
                            SqlTextLiteral("PK_" + TextParameter(call, "table_name", 0)) + " AS PK_NAME FROM k");
    writer_->ReturnStatus(0);
}

/// Names are patterns; kinds are not told apart.
void RemoteCalls::ListTables(const Call& call) {
    Call elsewhere = call;
    const std::string database = TextParameter(call, "table_qualifier", 2);
    if (!database.empty() && database != "%") elsewhere.database = database;
    const std::string shown = elsewhere.database.empty() ? database_->Name() : elsewhere.database;
    const std::string pattern = TextParameter(call, "table_name", 0);
    RunQuery(elsewhere,
             "WITH t AS (SELECT name, upper(type) AS kind FROM sqlite_master WHERE type IN ('table', 'view') "
             "AND name LIKE " +
                 SqlTextLiteral(pattern.empty() ? "%" : pattern) + " AND name NOT LIKE 'sqlite%') SELECT " +
                 SqlTextLiteral(shown) +
                 " AS TABLE_QUALIFIER, 'dbo' AS TABLE_OWNER, name AS TABLE_NAME, kind AS TABLE_TYPE, "
                 "NULL AS REMARKS FROM t ORDER BY kind, name");
    writer_->ReturnStatus(0);
}

}  // namespace vlm::host::tds
