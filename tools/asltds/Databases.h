#pragma once

#include <cstdint>
#include <filesystem>
#include <map>
#include <mutex>
#include <string>
#include <string_view>
#include <vector>

#include "TokenWriter.h"
#include "database/Connection.h"

namespace vlm::host::tds {

/// The folder of databases that the server serves, one file each. A database "master" is always there. While they are
/// served, readers do not hold up who writes; when the server ends the files are as other programs keep them.
class ServedFolder {
public:
    static constexpr const char* kMaster = "master";

    /// Throws vlm::Error for a folder that is not there.
    explicit ServedFolder(const std::string& path);
    ServedFolder(const ServedFolder&) = delete;
    ServedFolder& operator=(const ServedFolder&) = delete;
    ~ServedFolder();

    std::vector<std::string> Names() const;
    /// The name as its file has it; "" for a database that is not there. Names compare without regard to case.
    std::string Find(std::string_view name) const;
    /// Throws ServerError for one that is not there.
    data::ConnectionPtr Open(std::string_view name);

    /// Throw ServerError for one that is there already, one that is not there, a name that cannot be, "master".
    void Create(std::string_view name);
    void Drop(std::string_view name);

private:
    std::filesystem::path FileOf(std::string_view name) const;
    data::ConnectionPtr Connect(const std::string& name) const;
    void KeepOpen(const std::string& name);

    std::string path_;
    std::mutex mutex_;  // of what follows
    /// One connection to each database that was asked for, so that the last client's end does not lock its file.
    std::map<std::string, data::ConnectionPtr> kept_;
};

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
