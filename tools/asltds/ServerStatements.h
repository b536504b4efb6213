#pragma once

#include "Databases.h"
#include "Statements.h"

namespace vlm::host::tds {

class RemoteCalls;

/// Runs statements: those of the server itself here, those on data in the current database.
class ServerStatements {
public:
    ServerStatements(ServedFolder& folder, CurrentDatabase& database, TokenWriter& writer, RowSender& rows,
                     bool dayFirst)
        : folder_(&folder), database_(&database), writer_(&writer), rows_(&rows), dayFirst_(dayFirst) {}

    /// Who runs the procedures that statements call.
    void SetCalls(RemoteCalls& calls) { calls_ = &calls; }

    /// Every statement of a batch, each closed by `what`. The first error ends the batch. Throws vlm::Error.
    void RunBatch(const Tokens& batch, Done what);
    /// What columns a batch gives that is one query; nothing for any other.
    void Describe(const Tokens& batch);
    /// A procedure of the clinic's database; its row sets are closed as parts of it.
    void RunProcedure(data::Connection& connection, const std::string& call);

private:
    using Handler = void (ServerStatements::*)(const Tokens& statement, Done what);
    struct Beginning {
        const char* first;
        const char* second;  // "" for any
        Handler run;
    };
    static const Beginning kBeginnings[];

    void Run(const Tokens& statement, Done what);
    void RunSet(const Tokens& statement, Done what);
    void RunUse(const Tokens& statement, Done what);
    void RunBegin(const Tokens& statement, Done what);
    void RunBlock(const Tokens& statement, Done what);
    void RunCommit(const Tokens& statement, Done what);
    void RunRollback(const Tokens& statement, Done what);
    void RunIf(const Tokens& statement, Done what);
    void RunQuery(const Tokens& statement, Done what);
    void RunChange(const Tokens& statement, Done what);
    void RunDefinition(const Tokens& statement, Done what);
    void CreateDatabase(const Tokens& statement, Done what);
    void DropDatabase(const Tokens& statement, Done what);
    void AlterDatabase(const Tokens& statement, Done what);
    void CreateProcedure(const Tokens& statement, Done what);
    void DropProcedure(const Tokens& statement, Done what);
    void RunCall(const Tokens& statement, Done what);

    std::string Sql(const Tokens& statement) const;

    ServedFolder* folder_;
    CurrentDatabase* database_;
    TokenWriter* writer_;
    RowSender* rows_;
    RemoteCalls* calls_ = nullptr;
    bool counts_ = true;  // changed rows are told
    bool dayFirst_;       // a date is not read with the month before the day
};

}  // namespace vlm::host::tds
