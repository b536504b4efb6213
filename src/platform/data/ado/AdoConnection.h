#pragma once

#include "platform/automation/LateBound.h"
#include "platform/data/Connection.h"

namespace vlm::data::ado {

/// A host's connection, called by name. Errors keep the number, the source and the description that it gives. Never
/// opened and never closed here.
class AdoConnection final : public Connection {
public:
    explicit AdoConnection(com::Ref<IDispatch> connection) : connection_(std::move(connection)) {}

    bool IsOpen() const override;
    std::string InitialCatalog() const override;
    RecordsetPtr Open(std::string_view sql) override;
    std::int64_t Execute(std::string_view sql) override;
    void BeginTransaction() override { connection_.Call("BeginTrans"); }
    void CommitTransaction() override { connection_.Call("CommitTrans"); }
    void RollbackTransaction() override { connection_.Call("RollbackTrans"); }

private:
    com::LateBound connection_;
};

/// A connection as the library uses it: the native one inside an object of ours, else an AdoConnection. The object
/// must offer the connection interface and IDispatch: nothing when it does not.
ConnectionPtr ConnectionOf(IUnknown* object);

}  // namespace vlm::data::ado
