#pragma once

#include "ado/AdoTypes.h"
#include "automation/Object.h"

namespace vlm::data::ado {

/// A native connection as an automation object: State, Properties("Initial Catalog"), Execute, BeginTrans, CommitTrans,
/// RollbackTrans. It offers the connection interface's identifier for who asks whether it is a connection; its members
/// are called by name.
class ConnectionObject final : public com::DispatchObject<IDispatch, INativeConnection> {
public:
    explicit ConnectionObject(ConnectionPtr connection) : connection_(std::move(connection)) {}

    const ConnectionPtr& STDMETHODCALLTYPE Native() noexcept override { return connection_; }

private:
    std::span<const com::Member> Members() const noexcept override;
    void* Find(const IID& iid) noexcept override;

    HRESULT STDMETHODCALLTYPE State(std::int32_t* state);
    HRESULT STDMETHODCALLTYPE Properties(const VARIANT& name, IDispatch** properties);
    HRESULT STDMETHODCALLTYPE Execute(BSTR sql, const VARIANT& changed, std::int32_t options, IDispatch** rows);
    HRESULT STDMETHODCALLTYPE BeginTrans(std::int32_t* level);
    HRESULT STDMETHODCALLTYPE CommitTrans();
    HRESULT STDMETHODCALLTYPE RollbackTrans();

    ConnectionPtr connection_;
};

}  // namespace vlm::data::ado
