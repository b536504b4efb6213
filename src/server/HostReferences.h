#pragma once

#include <memory>
#include <thread>

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

/// The host's connection, used on the thread that set it only: an object of the host's must not cross apartments. On
/// another thread every use is an Error, until the connection is set there.
class HostConnection final : public data::Connection {
public:
    /// Null gives null. Throws Error (type mismatch) for an object that is no connection.
    static data::ConnectionPtr Of(IDispatch* object);
    /// The host's object, one reference added; null for no connection. Throws Error on another thread.
    static IDispatch* ObjectOf(const data::ConnectionPtr& connection);

    HostConnection(com::Ref<IDispatch> object, data::ConnectionPtr inner)
        : object_(std::move(object)), inner_(std::move(inner)) {}

    bool IsOpen() const override { return Here().IsOpen(); }
    std::string InitialCatalog() const override { return Here().InitialCatalog(); }
    data::RecordsetPtr Open(std::string_view sql) override { return Here().Open(sql); }
    std::int64_t Execute(std::string_view sql) override { return Here().Execute(sql); }
    data::UpdatableRecordsetPtr OpenForUpdate(std::string_view sql) override { return Here().OpenForUpdate(sql); }
    void BeginTransaction() override { Here().BeginTransaction(); }
    void CommitTransaction() override { Here().CommitTransaction(); }
    void RollbackTransaction() override { Here().RollbackTransaction(); }

private:
    /// The connection, on the thread that it belongs to.
    data::Connection& Here() const;

    com::Ref<IDispatch> object_;
    data::ConnectionPtr inner_;
    const std::thread::id thread_ = std::this_thread::get_id();
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
    void ShowContext(std::int32_t context) override;

private:
    com::LateBound calls_;
};

}  // namespace vlm::server
