#pragma once

#include <memory>

#include "automation/LateBound.h"
#include "database/Connection.h"
#include "frame/HostServices.h"

/// What the host hands in: each is kept together with the host's object, which is what the host gets back.
namespace vlm::server {

/// An object of the host's that the library keeps and hands on as it is.
class HostReference final : public HostObject {
public:
    explicit HostReference(com::Ref<IDispatch> object) : object_(std::move(object)) {}

    /// Null gives null.
    static HostObjectPtr Of(IDispatch* object) {
        return object == nullptr ? nullptr : std::make_shared<HostReference>(com::Ref<IDispatch>(object));
    }
    /// The host's object, one reference added; null for none.
    static IDispatch* ObjectOf(const HostObjectPtr& reference) {
        return reference ? com::Ref<IDispatch>(static_cast<IDispatch*>(reference->Native())).Detach() : nullptr;
    }

    void* Native() const noexcept override { return object_.Get(); }

private:
    com::Ref<IDispatch> object_;
};

/// The host's connection.
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

/// The host's help object, called by name.
class HelpReference final : public HelpObject {
public:
    /// Null gives null. Throws Error (type mismatch) for an object that is not of the host's help class.
    static std::shared_ptr<HelpObject> Of(IDispatch* object);
    /// The host's object, one reference added; null for none.
    static IDispatch* ObjectOf(const std::shared_ptr<HelpObject>& help);

    explicit HelpReference(com::Ref<IDispatch> object) : calls_(std::move(object)) {}

    void SetWindow(std::intptr_t windowHandle) override;
    void ShowContext(std::int32_t context) override { calls_.Call("ShowContext", {com::Variant(context)}); }

private:
    com::LateBound calls_;
};

}  // namespace vlm::server
