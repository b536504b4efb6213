#pragma once

#include <cstdint>
#include <memory>
#include <string>
#include <string_view>

#include "database/UpdatableRecordset.h"
#include "values/Error.h"

namespace vlm::data {

/// An open connection to the clinic's database. Statements are the system's own T-SQL on every adapter.
/// Errors throw vlm::Error with the engine's own text.
class Connection {
public:
    virtual ~Connection() = default;

    virtual bool IsOpen() const = 0;
    /// The database's name, such as "Studio0012".
    virtual std::string InitialCatalog() const = 0;

    /// Opens a SELECT, or a procedure call ("SP_Name 12"), forward-only and read-only. Never null.
    /// The row set must not outlive the connection.
    virtual RecordsetPtr Open(std::string_view sql) = 0;
    /// Runs a statement without rows; the number of rows it changed.
    virtual std::int64_t Execute(std::string_view sql) = 0;

    /// Opens a "SELECT * FROM Table [WHERE ...] [ORDER BY ...]" over one table whose rows may be changed and added.
    /// Never null; must not outlive the connection. What it writes belongs to the connection's transaction, if any.
    virtual UpdatableRecordsetPtr OpenForUpdate(std::string_view /*sql*/) {
        throw Error("Le righe di questa connessione non si possono modificare.");
    }

    virtual void BeginTransaction() = 0;
    virtual void CommitTransaction() = 0;
    virtual void RollbackTransaction() = 0;
};

using ConnectionPtr = std::shared_ptr<Connection>;

/// A transaction that rolls back unless it is committed. The roll-back never throws.
class Transaction {
public:
    explicit Transaction(Connection& connection) : connection_(&connection) { connection.BeginTransaction(); }
    Transaction(const Transaction&) = delete;
    Transaction& operator=(const Transaction&) = delete;
    ~Transaction() {
        try {
            if (connection_ != nullptr) connection_->RollbackTransaction();
        } catch (...) {  // the error that led here is the one to tell
        }
    }
    /// When the commit itself fails the transaction is still rolled back on leaving.
    void Commit() {
        connection_->CommitTransaction();
        connection_ = nullptr;
    }

private:
    Connection* connection_;
};

}  // namespace vlm::data
