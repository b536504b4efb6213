#include "ServerError.h"

#include <sqlite3.h>
#include <string_view>

namespace vlm::host::tds {

namespace {

struct KnownCode {
    int code;
    ServerErrorNumber number;
    int severity;
};

constexpr KnownCode kCodes[] = {
    {SQLITE_CONSTRAINT_PRIMARYKEY, kDuplicateKey, 14},
    {SQLITE_CONSTRAINT_UNIQUE, kDuplicateKey, 14},
    {SQLITE_CONSTRAINT_ROWID, kDuplicateKey, 14},
    {SQLITE_CONSTRAINT_NOTNULL, kNullInserted, 16},
    {SQLITE_CONSTRAINT, kConstraint, 16},
    {SQLITE_BUSY, kLockTimeout, 16},
    {SQLITE_LOCKED, kLockTimeout, 16},
};

struct KnownText {
    std::string_view beginning, part;
    ServerErrorNumber number;
    int severity;
};

// The translation's errors have no number, the engine's are all of one.
constexpr KnownText kTexts[] = {
    {"La tabella ", " non esiste", kUnknownObject, 16}, {"La procedura ", " non esiste", kUnknownProcedure, 16},
    {"La colonna ", " non esiste", kUnknownColumn, 16}, {"Il database ", " non esiste", kUnknownDatabase, 16},
    {"Istruzione SQL", "", kSyntaxError, 15},           {"L'istruzione SQL", "", kSyntaxError, 15},
    {"", "no such table", kUnknownObject, 16},          {"", "no such column", kUnknownColumn, 16},
    {"", "has no column named", kUnknownColumn, 16},    {"", "syntax error", kSyntaxError, 15},
    {"", "already exists", kObjectExists, 16},
};

}  // namespace

ServerError ServerError::From(const Error& error) {
    if (const auto* own = dynamic_cast<const ServerError*>(&error)) return *own;
    const std::string text = error.what();
    for (const KnownCode& known : kCodes) {
        if (error.Source() != "SQLite") break;
        if (error.Number() == known.code || (error.Number() & 0xFF) == known.code) {
            return {known.number, text, known.severity};
        }
    }
    for (const KnownText& known : kTexts) {
        if (text.starts_with(known.beginning) && text.find(known.part) != std::string::npos) {
            return {known.number, text, known.severity};
        }
    }
    return {kOther, text};
}

}  // namespace vlm::host::tds
