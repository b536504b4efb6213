#pragma once

#include <map>
#include <string>
#include <vector>

#include "Parameters.h"
#include "ServerStatements.h"

namespace vlm::host::tds {

/// A procedure's call, as a message of its own or as a statement.
struct Call {
    std::string database, name;  // the database is "" for the current one
    std::vector<Parameter> parameters;

    /// `[EXEC] Name literal, @name = literal, ...`
    static Call Parse(const Tokens& statement);
    /// The next call of a message. Throws ProtocolError.
    static Call Read(ByteReader& reader, bool largeTexts);
};

/// Runs procedures: those of the server itself by what they do, all others from the database.
class RemoteCalls {
public:
    RemoteCalls(ServedFolder& folder, CurrentDatabase& database, TokenWriter& writer, ServerStatements& statements)
        : folder_(&folder), database_(&database), writer_(&writer), statements_(&statements) {}

    void Run(const Call& call);

private:
    using Handler = void (RemoteCalls::*)(const Call& call);
    struct Procedure {
        const char* name;
        std::size_t parameters;  // at least
        Handler run;
    };
    static const Procedure kProcedures[];
    struct Prepared {
        Tokens definitions, statement;
    };

    void RunInDatabase(const Call& call);
    void ExecuteSql(const Call& call);
    void Prepare(const Call& call);
    void PrepareAndExecute(const Call& call);
    void ExecutePrepared(const Call& call);
    void Unprepare(const Call& call);
    void ListPrimaryKeys(const Call& call);
    void ListTables(const Call& call);

    int Keep(const Call& call);
    void RunPrepared(int handle, const Call& call, std::size_t firstValue);
    void RunQuery(const Call& call, const std::string& sql);

    ServedFolder* folder_;
    CurrentDatabase* database_;
    TokenWriter* writer_;
    ServerStatements* statements_;
    std::map<int, Prepared> prepared_;
    int lastHandle_ = 0;
};

}  // namespace vlm::host::tds
