#include <cstdlib>

#include "odbc/OdbcConnection.h"
#include "support/ConnectionContract.h"
#include "support/TempFolder.h"

namespace vlm::data::testing {
namespace {

/// Databases that are files, through the driver for them.
class OdbcFiles final : public ConnectionFixture {
public:
    void Run(const std::string& database, const std::string& sql) override { Open(database)->Execute(sql); }
    ConnectionPtr Connect() override { return Open("Studio0012"); }

private:
    /// Where this is an emulated system, its driver is one of the system around it and knows that one's paths.
    std::string PathOf(const std::string& file) const {
        const char* const drive = std::getenv("VLM_DRIVE_C");
        std::string path = folder_ / file;
        if (drive == nullptr) return path;
        std::replace(path.begin(), path.end(), '\\', '/');
        return drive + path.substr(2);
    }
    ConnectionPtr Open(const std::string& database) const {
        return odbc::OdbcConnection::Connect("Driver={SQLite3};Database=" + PathOf(database + ".sqlite") +
                                             ";Timeout=0;SyncPragma=OFF");
    }

    test::TempFolder folder_;
};

const ConnectionAdapter kFiles = {"files",
                                  [] { return std::unique_ptr<ConnectionFixture>(std::make_unique<OdbcFiles>()); },
                                  {.amountsAreText = true, .catalogIsFile = true, .latinStatements = true}};

INSTANTIATE_TEST_SUITE_P(OdbcFiles, ConnectionContract, ::testing::Values(kFiles));
INSTANTIATE_TEST_SUITE_P(OdbcFiles, OdbcContract, ::testing::Values(kFiles));

}  // namespace
}  // namespace vlm::data::testing
