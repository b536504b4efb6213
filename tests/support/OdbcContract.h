#pragma once

#include "support/ConnectionContract.h"

namespace vlm::data::testing {

/// What the ODBC adapter promises with every driver, beside what all adapters do.
class OdbcContract : public ::testing::TestWithParam<ConnectionAdapter> {
protected:
    void SetUp() override;

    std::unique_ptr<ConnectionFixture> fixture;
    ConnectionPtr connection;
};

}  // namespace vlm::data::testing
