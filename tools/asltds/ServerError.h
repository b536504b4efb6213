#pragma once

#include "values/Error.h"

namespace vlm::host::tds {

/// Numbers by which clients know what went wrong.
enum ServerErrorNumber {
    kSyntaxError = 102,
    kUnknownColumn = 207,
    kUnknownObject = 208,
    kNullInserted = 515,
    kConstraint = 547,
    kUnknownDatabase = 911,
    kDateOutOfRange = 242,
    kDeadlockVictim = 1205,
    kLockTimeout = 1222,
    kDatabaseExists = 1801,
    kDuplicateKey = 2627,
    kObjectExists = 2714,
    kUnknownProcedure = 2812,
    kDropUnknown = 3701,
    kCommitWithoutBegin = 3902,
    kRollbackWithoutBegin = 3903,
    kCannotOpenDatabase = 4060,
    kLoginFailed = 18456,
    kOther = 50000,
};

/// An error as a client is told of it. `Number()` is one of the above.
class ServerError final : public Error {
public:
    static constexpr int kUsualSeverity = 16;

    ServerError(ServerErrorNumber number, const std::string& text, int severity = kUsualSeverity)
        : Error(text, number, "asltds"), severity_(severity) {}
    /// An adapter's error under the number that it has here.
    static ServerError From(const Error& error);

    int Severity() const { return severity_; }

private:
    int severity_;
};

}  // namespace vlm::host::tds
