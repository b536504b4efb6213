#pragma once

#include "automation/LateBound.h"
#include "database/Connection.h"

namespace vlm::data::ado {

/// One of the machine's own row sets, closed and on no connection, as a host's own code would make it. Throws Error
/// where there are none.
com::LateBound NewMachineRecordset();

/// A host's connection, called by name. Errors keep the number, the source and the description that it gives. Never
/// opened and never closed here.
class AdoConnection final : public Connection {
public:
    explicit AdoConnection(com::Ref<IDispatch> connection) : connection_(std::move(connection)) {}

    bool IsOpen() const override;
    std::string InitialCatalog() const override;
    RecordsetPtr Open(std::string_view sql) override;
    std::int64_t Execute(std::string_view sql) override;
    UpdatableRecordsetPtr OpenForUpdate(std::string_view sql) override;
    void BeginTransaction() override { Ask("BeginTrans"); }
    void CommitTransaction() override { Ask("CommitTrans"); }
    void RollbackTransaction() override { Ask("RollbackTrans"); }

private:
    /// Calls a member; a failure that the connection does not tell of is told in its provider's words.
    com::Variant Ask(std::string_view member, std::vector<com::Variant> arguments = {}) const;
    [[noreturn]] void ThrowProviderError(const Error& error) const;

    com::LateBound connection_;
};

/// A connection as the library uses it: the native one inside an object of ours, else an AdoConnection. The object
/// must offer the connection interface and IDispatch: nothing when it does not.
ConnectionPtr ConnectionOf(IUnknown* object);

}  // namespace vlm::data::ado
