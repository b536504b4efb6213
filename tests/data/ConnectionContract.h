#pragma once

#include <gtest/gtest.h>
#include <memory>
#include <ostream>
#include <string>

#include "platform/data/Connection.h"

namespace vlm::data::testing {

/// The databases of one test, as an adapter keeps them. The clinic's own is Studio0012.
class ConnectionFixture {
public:
    virtual ~ConnectionFixture() = default;
    /// Runs a statement of definition or change in the named database, which comes to exist on first use.
    virtual void Run(const std::string& database, const std::string& sql) = 0;
    virtual ConnectionPtr Connect() = 0;
};

struct ConnectionAdapter {
    const char* name;
    std::unique_ptr<ConnectionFixture> (*make)();
};

inline void PrintTo(const ConnectionAdapter& adapter, std::ostream* out) { *out << adapter.name; }

/// What every adapter promises. An adapter's own test file runs it:
/// INSTANTIATE_TEST_SUITE_P(Name, ConnectionContract, ::testing::Values(ConnectionAdapter{...}));
class ConnectionContract : public ::testing::TestWithParam<ConnectionAdapter> {
protected:
    void SetUp() override;

    std::unique_ptr<ConnectionFixture> fixture;
    ConnectionPtr connection;
};

}  // namespace vlm::data::testing
