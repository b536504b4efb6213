#include "Databases.h"

#include <algorithm>
#include <cstdio>
#include <utility>

#include "sqlite/SqliteConnection.h"
#include "values/Utf8.h"

namespace vlm::host::tds {

namespace {

constexpr std::string_view kExtension = ".sqlite";
constexpr int kBusyMilliseconds = 2000;

std::filesystem::path PathOf(std::string_view utf8) {
    return std::filesystem::path(std::u8string(utf8.begin(), utf8.end()));
}

}  // namespace

ServedFolder::ServedFolder(const std::string& path) : path_(path) {
    std::error_code failure;
    if (!std::filesystem::is_directory(PathOf(path), failure)) throw Error("La cartella " + path + " non esiste.");
    if (Find(kMaster).empty()) Create(kMaster);
    for (const std::string& name : Names()) KeepOpen(name);
}

ServedFolder::~ServedFolder() {
    for (const auto& [name, connection] : kept_) {
        try {
            connection->Execute("PRAGMA journal_mode = DELETE");
        } catch (const Error&) {  // another program has it open
            continue;
        }
    }
}

/// A file that is no database, or is in use by another program, is served as it is.
void ServedFolder::KeepOpen(const std::string& name) {
    const std::lock_guard lock(mutex_);
    if (kept_.contains(name)) return;
    try {
        data::ConnectionPtr connection = Connect(name);
        connection->Execute("PRAGMA journal_mode = WAL");
        connection->Execute("PRAGMA user_version");  // from its first read on the journal is held open
        kept_[name] = std::move(connection);
    } catch (const Error&) {
        return;
    }
}

std::vector<std::string> ServedFolder::Names() const {
    std::vector<std::string> names;
    std::error_code failure;
    for (const auto& entry : std::filesystem::directory_iterator(PathOf(path_), failure)) {
        if (entry.path().extension() != kExtension) continue;
        const std::u8string name = entry.path().stem().u8string();
        names.emplace_back(name.begin(), name.end());
    }
    std::sort(names.begin(), names.end());
    return names;
}

std::string ServedFolder::Find(std::string_view name) const {
    for (std::string& each : Names()) {
        if (text::EqualNoCase(each, name)) return std::move(each);
    }
    return {};
}

std::filesystem::path ServedFolder::FileOf(std::string_view name) const {
    return PathOf(path_) / PathOf(std::string(name) + std::string(kExtension));
}

data::ConnectionPtr ServedFolder::Connect(const std::string& name) const {
    auto connection = std::make_shared<data::SqliteConnection>(path_, name, kBusyMilliseconds);
    connection->Execute("PRAGMA synchronous = NORMAL");
    return connection;
}

data::ConnectionPtr ServedFolder::Open(std::string_view name) {
    const std::string known = Find(name);
    if (known.empty()) {
        throw ServerError(kUnknownDatabase, "Il database " + std::string(name) + " non esiste sul server.");
    }
    KeepOpen(known);
    return Connect(known);
}

void ServedFolder::Create(std::string_view name) {
    const std::string shown(name);
    if (name.empty() || name.find_first_of("/\\:") != std::string_view::npos || name.starts_with('.')) {
        throw ServerError(kSyntaxError, "Il nome di database '" + shown + "' non è ammesso.", 15);
    }
    if (!Find(name).empty()) throw ServerError(kDatabaseExists, "Il database " + shown + " esiste già.");
    std::FILE* const file = std::fopen(FileOf(name).c_str(), "wbx");
    if (file == nullptr) throw ServerError(kOther, "Il database " + shown + " non si può creare.");
    std::fclose(file);
    KeepOpen(shown);
}

void ServedFolder::Drop(std::string_view name) {
    const std::string known = Find(name);
    if (known.empty() || known == kMaster) {
        throw ServerError(kDropUnknown, "Il database " + std::string(name) + " non si può eliminare.");
    }
    const std::lock_guard lock(mutex_);
    kept_.erase(known);
    std::error_code failure;
    std::filesystem::remove(FileOf(known), failure);
    for (const char* companion : {"-wal", "-shm", "-journal"}) {
        std::filesystem::path path = FileOf(known);
        std::filesystem::remove(path += companion, failure);
    }
}

void CurrentDatabase::Use(std::string_view name) {
    if (text::EqualNoCase(name, name_)) return writer_->DatabaseChanged(name_, name_);
    if (transactions_ > 0) {
        throw ServerError(kOther,
                          "Il database non si può cambiare in " + std::string(name) + " con una transazione aperta.");
    }
    connection_ = folder_->Open(name);
    const std::string before = std::exchange(name_, connection_->InitialCatalog());
    writer_->DatabaseChanged(name_, before);
}

void CurrentDatabase::Begin() {
    if (transactions_ == 0) {
        connection_->BeginTransaction();
        writer_->TransactionChanged(TransactionEvent::Begun, ++transaction_);
    }
    ++transactions_;
}

void CurrentDatabase::Commit() {
    if (transactions_ == 0) throw ServerError(kCommitWithoutBegin, "COMMIT senza una transazione aperta.");
    if (transactions_ == 1) {
        connection_->CommitTransaction();
        writer_->TransactionChanged(TransactionEvent::Committed, transaction_);
    }
    --transactions_;
}

void CurrentDatabase::Rollback() {
    if (transactions_ == 0) throw ServerError(kRollbackWithoutBegin, "ROLLBACK senza una transazione aperta.");
    transactions_ = 0;
    connection_->RollbackTransaction();
    writer_->TransactionChanged(TransactionEvent::RolledBack, transaction_);
}

}  // namespace vlm::host::tds
