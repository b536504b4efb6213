#include "SqliteSession.h"

#include <algorithm>
#include <sqlite3.h>

#include "database/SqlTokens.h"
#include "values/Error.h"
#include "values/Utf8.h"

namespace vlm::data {

namespace {

constexpr std::string_view kOwnSchema = "main";
constexpr std::string_view kExtension = ".sqlite";

/// Page cache in KiB: the clinic's tables are the large ones, of the others a few small tables are read.
constexpr int kOwnCacheKiB = 5120;
constexpr int kAttachedCacheKiB = 512;

std::filesystem::path PathOf(std::string_view utf8) {
    return std::filesystem::path(std::u8string(utf8.begin(), utf8.end()));
}

std::string Utf8Of(const std::filesystem::path& path) {
    const std::u8string text = path.u8string();
    return std::string(text.begin(), text.end());
}

struct Failure {
    int code;
    std::string_view text;  // after "Il database NAME "
};

constexpr Failure kFailures[] = {
    {SQLITE_BUSY, "è bloccato da un altro utente."},
    {SQLITE_LOCKED, "è bloccato da un'altra operazione."},
    {SQLITE_READONLY, "è di sola lettura."},
    {SQLITE_FULL, "non si può scrivere: lo spazio su disco è esaurito."},
    {SQLITE_CORRUPT, "è danneggiato."},
    {SQLITE_NOTADB, "non è un database o è danneggiato."},
    {SQLITE_CANTOPEN, "non si può aprire."},
    {SQLITE_IOERR, "non si può leggere o scrivere."},
};

/// What the engine says of a statement that it does not know, in the words of the translation.
std::string UnknownFunction(const std::string& engineText) {
    static constexpr std::string_view kBeginning = "no such function: ";
    return engineText.starts_with(kBeginning) ? engineText.substr(kBeginning.size()) : std::string();
}

}  // namespace

void FinalizeStatement::operator()(sqlite3_stmt* statement) const noexcept { sqlite3_finalize(statement); }

SqliteSession::SqliteSession(const std::string& folder, std::string_view catalog, int busyMilliseconds)
    : folder_(PathOf(folder)), catalog_(catalog) {
    std::error_code failure;
    if (!std::filesystem::is_directory(folder_, failure)) throw Error("La cartella " + folder + " non esiste.");
    const std::string file = Utf8Of(FileOf(catalog));
    const int flags = SQLITE_OPEN_READWRITE | SQLITE_OPEN_NOMUTEX;
    try {
        if (sqlite3_open_v2(file.c_str(), &handle_, flags, nullptr) != SQLITE_OK) Fail({});
        sqlite3_busy_timeout(handle_, busyMilliseconds);
        RegisterFunctions(handle_);
        Run("PRAGMA main.cache_size = -" + std::to_string(kOwnCacheKiB));
    } catch (...) {
        sqlite3_close_v2(handle_);
        throw;
    }
}

SqliteSession::~SqliteSession() { sqlite3_close_v2(handle_); }

/// The database's file, its name compared without regard to case.
std::filesystem::path SqliteSession::FileOf(std::string_view database) const {
    const std::string name = std::string(database) + std::string(kExtension);
    const bool plain = name.find_first_of("/\\:") == std::string::npos;
    std::error_code failure;
    if (plain && std::filesystem::is_regular_file(folder_ / PathOf(name), failure)) return folder_ / PathOf(name);
    for (const auto& entry : std::filesystem::directory_iterator(folder_, failure)) {
        if (text::EqualNoCase(Utf8Of(entry.path().filename()), name)) return entry.path();
    }
    throw Error("Il database " + std::string(database) + " non esiste nella cartella " + Utf8Of(folder_) + ".");
}

std::string SqliteSession::NameOf(const std::string& schema) const { return schema == kOwnSchema ? catalog_ : schema; }

std::string SqliteSession::Attach(std::string_view database, std::string& detached) {
    detached.clear();
    if (database.empty() || text::EqualNoCase(database, catalog_)) return std::string(kOwnSchema);
    const auto known = std::find_if(attached_.begin(), attached_.end(),
                                    [&](const Attached& each) { return text::EqualNoCase(each.name, database); });
    if (known != attached_.end()) {
        known->lastUse = statement_;
        return known->name;
    }
    const std::filesystem::path file = FileOf(database);
    const std::string name = Utf8Of(file.stem());
    const int limit = sqlite3_limit(handle_, SQLITE_LIMIT_ATTACHED, -1);
    if (attached_.size() >= static_cast<std::size_t>(limit)) detached = LetGo(name);
    const SqliteStatementPtr statement = Prepare("ATTACH DATABASE ?1 AS ?2", {name});
    const std::string path = Utf8Of(file);
    sqlite3_bind_text(statement.get(), 1, path.c_str(), -1, SQLITE_STATIC);
    sqlite3_bind_text(statement.get(), 2, name.c_str(), -1, SQLITE_STATIC);
    Step(statement.get(), {name});
    attached_.push_back({name, 0, statement_});
    Run("PRAGMA " + SqlQuotedName(name) + ".cache_size = -" + std::to_string(kAttachedCacheKiB));
    return name;
}

bool SqliteSession::InTransaction() const { return sqlite3_get_autocommit(handle_) == 0; }

std::string SqliteSession::LetGo(const std::string& wanted) {
    auto oldest = attached_.end();
    for (auto each = attached_.begin(); each != attached_.end(); ++each) {
        const bool idle = each->holders == 0 && each->lastUse != statement_;
        if (idle && (oldest == attached_.end() || each->lastUse < oldest->lastUse)) oldest = each;
    }
    if (oldest == attached_.end() || InTransaction()) throw TooManyDatabases(wanted);
    const std::string name = oldest->name;
    try {
        Run("DETACH DATABASE " + SqlQuotedName(name));
    } catch (const Error&) {  // a row set over other databases keeps the engine's lock on this one too
        throw TooManyDatabases(wanted);
    }
    attached_.erase(oldest);
    return name;
}

void SqliteSession::Count(const std::vector<std::string>& schemas, int change) noexcept {
    for (Attached& each : attached_) {
        if (std::find(schemas.begin(), schemas.end(), each.name) != schemas.end()) each.holders += change;
    }
}

SqliteStatementPtr SqliteSession::Prepare(std::string_view sql, const std::vector<std::string>& databases) const {
    sqlite3_stmt* prepared = nullptr;
    const char* rest = nullptr;
    if (sqlite3_prepare_v2(handle_, sql.data(), static_cast<int>(sql.size()), &prepared, &rest) != SQLITE_OK) {
        Fail(databases);
    }
    SqliteStatementPtr statement(prepared);
    const std::string_view after = sql.substr(static_cast<std::size_t>(rest - sql.data()));
    if (after.find_first_not_of(" ;") != std::string_view::npos) RefuseSql(after);
    return statement;
}

bool SqliteSession::Step(sqlite3_stmt* statement, const std::vector<std::string>& databases) const {
    const int result = sqlite3_step(statement);
    if (result == SQLITE_ROW) return true;
    if (result != SQLITE_DONE) Fail(databases);
    return false;
}

void SqliteSession::Run(std::string_view sql) const {
    const SqliteStatementPtr statement = Prepare(sql, {});
    while (Step(statement.get(), {})) continue;
}

void SqliteSession::Fail(const std::vector<std::string>& databases) const {
    const int code = sqlite3_extended_errcode(handle_);
    const std::string engineText = sqlite3_errmsg(handle_);
    if (const std::string function = UnknownFunction(engineText); !function.empty()) RefuseSql(function);
    std::string names;
    for (const std::string& schema : databases) names += (names.empty() ? "" : " o ") + NameOf(schema);
    if (names.empty()) names = catalog_;
    for (const Failure& failure : kFailures) {
        if (failure.code != (code & 0xFF)) continue;
        throw Error("Il database " + names + " " + std::string(failure.text) + " (" + engineText + ")", code, "SQLite");
    }
    throw Error("Errore del database " + names + ": " + engineText, code, "SQLite");
}

}  // namespace vlm::data
