#pragma once

#include <string>

#include "automation/Object.h"

namespace vlm::host {

/// The host's user rights as an automation object: User, the name of who works with the host. Here everybody may do
/// everything.
class UserRights final : public com::DispatchObject<IDispatch> {
public:
    explicit UserRights(std::string user) : user_(std::move(user)) {}

private:
    std::span<const com::Member> Members() const noexcept override;
    void* Find(const IID& iid) noexcept override;

    HRESULT STDMETHODCALLTYPE User(BSTR* user);

    std::string user_;
};

}  // namespace vlm::host
