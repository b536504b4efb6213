#pragma once

#include <string>
#include <string_view>

#include "asltds/ServedFolder.h"
#include "asltds/TokenWriter.h"

namespace vlm::host::tds {

/// The database that one connection works in, and its transaction. The client is told of what changes.
class CurrentDatabase {
public:
    CurrentDatabase(ServedFolder& folder, TokenWriter& writer) : folder_(&folder), writer_(&writer) {}

    /// Throws ServerError for a database that is not there, and while a transaction is open in another one.
    void Use(std::string_view name);
    const std::string& Name() const { return name_; }
    data::Connection& Connection() const { return *connection_; }

    /// Nested transactions count; the outermost one commits, a roll-back gives up all of them.
    void Begin();
    void Commit();
    void Rollback();
    int TransactionCount() const { return transactions_; }

    /// Whether a statement on data begins a transaction by itself.
    void SetImplicitTransactions(bool on) { implicit_ = on; }
    void BeginImplicitly() {
        if (implicit_ && transactions_ == 0) Begin();
    }

private:
    ServedFolder* folder_;
    TokenWriter* writer_;
    std::string name_;
    data::ConnectionPtr connection_;  // gives up what is open when it goes
    int transactions_ = 0;
    std::uint64_t transaction_ = 0;  // the number of the latest
    bool implicit_ = false;
};

}  // namespace vlm::host::tds
