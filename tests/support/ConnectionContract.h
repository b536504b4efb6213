#pragma once

#include <gtest/gtest.h>
#include <memory>
#include <ostream>
#include <string>

#include "support/RowText.h"

namespace vlm::data::testing {

/// The databases of one test, as an adapter keeps them. The clinic's own is Studio0012.
class ConnectionFixture {
public:
    virtual ~ConnectionFixture() = default;
    /// Runs a statement of definition or change in the named database, which comes to exist on first use.
    virtual void Run(const std::string& database, const std::string& sql) = 0;
    virtual ConnectionPtr Connect() = 0;
};

template <typename Test>
class OnDatabases : public Test {
protected:
    void Run(std::initializer_list<std::string> statements) {
        for (const std::string& sql : statements) fixture->Run("Studio0012", sql);
    }
    std::string Rows(const std::string& sql) { return RowText(*connection, sql); }

    std::unique_ptr<ConnectionFixture> fixture;
    ConnectionPtr connection;
};

/// Where a driver of single files cannot give what a server gives. The suite expects the difference as it is.
struct DriverDifferences {
    bool amountsAreText = false;   // it knows no MONEY: such a cell is a text, read as an amount all the same
    bool catalogIsFile = false;    // its database is a path
    bool latinStatements = false;  // it takes no wide statements: what is not Latin-1 can only be a parameter
};

template <typename Fixture>
std::unique_ptr<ConnectionFixture> MakeDatabases() {
    return std::make_unique<Fixture>();
}

struct ConnectionAdapter {
    const char* name;
    std::unique_ptr<ConnectionFixture> (*make)();
    DriverDifferences differs = {};
};

inline void PrintTo(const ConnectionAdapter& adapter, std::ostream* out) { *out << adapter.name; }

/// What every adapter promises, in SQL that every engine speaks. An adapter's own test file runs it:
/// INSTANTIATE_TEST_SUITE_P(Name, ConnectionContract, ::testing::Values(ConnectionAdapter{...}));
class ConnectionContract : public OnDatabases<::testing::TestWithParam<ConnectionAdapter>> {
protected:
    void SetUp() override;
};
/// What an adapter to the host's engine promises beside it: the dialect in which the system's statements are written.
class DialectContract : public ConnectionContract {};
/// What the ODBC adapter promises with every driver, beside what all adapters do.
class OdbcContract : public ConnectionContract {};

}  // namespace vlm::data::testing
