#include "services/UserRights.h"

#include "automation/ErrorReport.h"
#include "server/VlmASLServicesLib.h"

namespace vlm::host {

std::span<const com::Member> UserRights::Members() const noexcept {
    static constexpr std::array kMembers = {com::Get<&UserRights::User>("User", 1, VT_BSTR)};
    return kMembers;
}

void* UserRights::Find(const IID& iid) noexcept {
    if (com::Same(iid, server::kRightsId)) return static_cast<IDispatch*>(this);
    return DispatchObject::Find(iid);
}

HRESULT UserRights::User(BSTR* user) {
    return com::Guarded("aslhost", server::kRightsId, [&] { *user = com::Bstr(user_).Detach(); });
}

}  // namespace vlm::host
