#pragma once

#include <string>
#include <vector>

#include "OdbcHandle.h"
#include "odbc/OdbcText.h"

namespace vlm::data::odbc {

/// A row set whose rows still come from the server.
class OdbcReader {
public:
    virtual ~OdbcReader() = default;
    /// Takes what is left of the rows into memory: the connection is wanted for another statement.
    virtual void ReadAhead() = 0;
};

/// One connection to a server. It is never opened again by itself: what a transaction or a run has done so far would
/// be gone without anybody's notice. Once it has failed, every further use is an error.
class OdbcSession {
public:
    /// Throws Error when the server cannot be reached or refuses.
    explicit OdbcSession(const OdbcText& text);
    OdbcSession(const OdbcSession&) = delete;
    OdbcSession& operator=(const OdbcSession&) = delete;
    /// Gives up a transaction that is open.
    ~OdbcSession();

    SQLHANDLE Handle() const { return connection_.Get(); }
    bool Lost() const { return lost_; }

    /// Throws OdbcError for a call on `handle` that went wrong. What the driver warns of is no error, but some drivers
    /// call an error a warning when rows came before it.
    void Check(SQLRETURN result, SQLSMALLINT handleType, SQLHANDLE handle);
    /// Throws Error when the driver knows that the server is gone: some end a row set then as if it were complete.
    void RequireConnected();

    /// A connection carries one statement at a time, as servers without several active row sets want it. Whoever begins
    /// one asks here first; a row set that is still being read then takes its rest into memory. So a look-up in the
    /// middle of a run sees the run's own transaction, which a second connection would wait for. Throws the error of a
    /// row set that could not be read to its end.
    void Claim(OdbcReader* reader);
    /// The reader is done, or gone.
    void Release(const OdbcReader* reader) noexcept;

    void BeginTransaction();
    /// Throws when the transaction is not committed. Once it is, nothing is thrown: a connection that cannot go on is
    /// lost for what comes after.
    void CommitTransaction();
    /// Whatever rows were being read. When it throws, the connection is lost, and the server gives the transaction up.
    void RollbackTransaction();

    std::string Catalog();
    std::string Information(SQLUSMALLINT what);

private:
    void Connect(const OdbcText& text);
    [[noreturn]] void Throw(SQLSMALLINT handleType, SQLHANDLE handle);
    bool IsDead() const;
    bool SetAutoCommit(bool on);

    std::vector<std::string> secrets_;
    OdbcEnvironmentHandle environment_;
    OdbcConnectionHandle connection_;
    OdbcReader* reader_ = nullptr;
    bool connected_ = false;
    bool lost_ = false;
};

}  // namespace vlm::data::odbc
