#pragma once

#include <memory>
#include <string>
#include <string_view>

#include "database/Connection.h"
#include "odbc/OdbcText.h"

namespace vlm::data::odbc {

class OdbcSession;

/// A database on a server, through the system's ODBC. Statements go to it as they stand. Errors are OdbcError with the
/// server's text, state and number; a connection that has failed stays failed. For one thread at a time.
class OdbcConnection final : public Connection {
public:
    /// An ODBC connection text; beside the driver's own keys `Dialect=QualifySchema` writes `Aldra.dbo.Comune` for
    /// `Aldra..Comune`. Throws Error when the server cannot be reached or refuses; no message shows the password.
    static ConnectionPtr Connect(std::string_view connectionText);

    explicit OdbcConnection(OdbcText text);
    ~OdbcConnection() override;

    bool IsOpen() const override;
    std::string InitialCatalog() const override;

    RecordsetPtr Open(std::string_view sql) override;
    std::int64_t Execute(std::string_view sql) override;
    /// Throws Error for a table without a primary key.
    UpdatableRecordsetPtr OpenForUpdate(std::string_view sql) override;

    void BeginTransaction() override;
    void CommitTransaction() override;
    void RollbackTransaction() override;

private:
    /// Settings of the session that the system's statements rely on.
    void Prepare();
    std::string Statement(std::string_view sql) const;

    bool qualifySchema_;
    std::string database_;  // as the connection text names it
    std::shared_ptr<OdbcSession> session_;
    bool inTransaction_ = false;
};

}  // namespace vlm::data::odbc
