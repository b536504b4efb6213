#include "ado/AdoConnection.h"
#include "ado/ConnectionObject.h"
#include "ado/RecordsetObject.h"
#include "automation/ErrorReport.h"
#include "support/DatabaseFolder.h"
#include "support/ForeignObject.h"
#include "values/Error.h"

namespace vlm::data::testing {
namespace {

using ado::AdoConnection;
using ado::ConnectionObject;
using test::Foreign;
using test::ForeignObject;

/// A row set as a machine's data library makes them: closed, on no connection, to be opened for update by name. It is
/// one of ours once it is open.
class OpenableRows final : public com::DispatchObject<IDispatch> {
public:
    explicit OpenableRows(ConnectionPtr native) : native_(std::move(native)) {}

    HRESULT STDMETHODCALLTYPE GetIDsOfNames(REFIID reserved, LPOLESTR* names, UINT count, LCID locale,
                                            DISPID* ids) override {
        const bool own = !rows_ || com::ToUtf8(com::WideView(names[0])) == "Open";
        return own ? DispatchObject::GetIDsOfNames(reserved, names, count, locale, ids)
                   : rows_->GetIDsOfNames(reserved, names, count, locale, ids);
    }
    HRESULT STDMETHODCALLTYPE Invoke(DISPID id, REFIID reserved, LCID locale, WORD flags, DISPPARAMS* parameters,
                                     VARIANT* result, EXCEPINFO* exception, UINT* argument) override {
        return id == kOpen
                   ? DispatchObject::Invoke(id, reserved, locale, flags, parameters, result, exception, argument)
                   : rows_->Invoke(id, reserved, locale, flags, parameters, result, exception, argument);
    }

private:
    static constexpr DISPID kOpen = 1000;

    std::span<const com::Member> Members() const noexcept override {
        static constexpr std::array kMembers = {
            com::Method<&OpenableRows::Open>("Open", kOpen, VT_EMPTY,
                                             {{"Source", VT_BSTR},
                                              {"ActiveConnection", VT_DISPATCH},
                                              {"CursorType", VT_I4},
                                              {"LockType", VT_I4},
                                              {"Options", VT_I4}}),
        };
        return kMembers;
    }
    HRESULT STDMETHODCALLTYPE Open(BSTR sql, IDispatch* connection, std::int32_t cursor, std::int32_t lock,
                                   std::int32_t options) {
        return com::Guarded("Provider", ado::kRecordsetId, [&] {
            const bool connected = static_cast<bool>(com::Query<IUnknown>(connection, ado::kConnectionId));
            if (!connected || cursor != 1 || lock != 3 || options != 1) throw Error("not opened for update");
            rows_ = ado::MakeRecordsetObject(native_->OpenForUpdate(com::ToUtf8(sql)), native_);
        });
    }

    ConnectionPtr native_;
    com::Ref<IDispatch> rows_;
};

/// Our databases seen through somebody else's connection.
template <bool inBlocks>
class ForeignDatabases final : public ConnectionFixture {
public:
    ~ForeignDatabases() override { EXPECT_LE(world_.alive, 1); }  // the connection itself ends after the fixture

    void Run(const std::string& database, const std::string& sql) override { folder_.Run(database, sql); }
    ConnectionPtr Connect() override {
        if (!inBlocks) world_.hidden = {"GetRows"};
        ConnectionPtr native = folder_.Connect();
        const auto newRows = [native, &world = world_] {
            return com::LateBound(com::Make<ForeignObject>(com::Make<OpenableRows>(native), world));
        };
        return std::make_shared<AdoConnection>(
            com::Make<ForeignObject>(com::Make<ConnectionObject>(std::move(native)), world_), newRows);
    }

private:
    DatabaseFolder folder_;
    Foreign world_;
};

const ConnectionAdapter kBlocks = {"blocks", MakeDatabases<ForeignDatabases<true>>};
const ConnectionAdapter kFields = {"fields", MakeDatabases<ForeignDatabases<false>>};

INSTANTIATE_TEST_SUITE_P(Ado, ConnectionContract, ::testing::Values(kBlocks, kFields));
INSTANTIATE_TEST_SUITE_P(Ado, DialectContract, ::testing::Values(kBlocks, kFields));

TEST(AdoDatabasesTest, WhereTheMachineHasNoRowSetsNoneIsChanged) {
    DatabaseFolder folder;
    folder.Run("Studio0012", "CREATE TABLE Riga (IDRiga INT)");
    Foreign world;
    AdoConnection connection(com::Make<ForeignObject>(com::Make<ConnectionObject>(folder.Connect()), world));
    EXPECT_THROW(connection.OpenForUpdate("SELECT * FROM Riga"), Error);
}

}  // namespace
}  // namespace vlm::data::testing
