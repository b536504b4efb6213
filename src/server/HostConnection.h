#pragma once

#include "automation/Ref.h"
#include "database/Connection.h"

namespace vlm::server {

/// A connection together with the host's object that it was set from, which is what the host gets back.
class HostConnection final : public data::Connection {
public:
    /// Null gives null. Throws Error (type mismatch) for an object that is no connection.
    static data::ConnectionPtr Of(IDispatch* object);
    /// The host's object, one reference added; null for no connection.
    static IDispatch* ObjectOf(const data::ConnectionPtr& connection);

    HostConnection(com::Ref<IDispatch> object, data::ConnectionPtr inner)
        : object_(std::move(object)), inner_(std::move(inner)) {}

    bool IsOpen() const override { return inner_->IsOpen(); }
    std::string InitialCatalog() const override { return inner_->InitialCatalog(); }
    data::RecordsetPtr Open(std::string_view sql) override { return inner_->Open(sql); }
    std::int64_t Execute(std::string_view sql) override { return inner_->Execute(sql); }
    data::UpdatableRecordsetPtr OpenForUpdate(std::string_view sql) override { return inner_->OpenForUpdate(sql); }
    void BeginTransaction() override { inner_->BeginTransaction(); }
    void CommitTransaction() override { inner_->CommitTransaction(); }
    void RollbackTransaction() override { inner_->RollbackTransaction(); }

private:
    com::Ref<IDispatch> object_;
    data::ConnectionPtr inner_;
};

}  // namespace vlm::server
