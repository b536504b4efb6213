#include "LoggedHelp.h"

#include "automation/ErrorReport.h"
#include "server/VlmASLServicesLib.h"

namespace vlm::host {

std::span<const com::Member> LoggedHelp::Members() const noexcept {
    static constexpr std::array kMembers = {
        com::Put<&LoggedHelp::PutWindow>("hWnd", 1, VT_I4),
        com::Method<&LoggedHelp::ShowContext>("ShowContext", 2, VT_EMPTY, {{"Context", VT_I4}}),
    };
    return kMembers;
}

void* LoggedHelp::Find(const IID& iid) noexcept {
    if (com::Same(iid, server::kCHMObjectId)) return static_cast<IDispatch*>(this);
    return DispatchObject::Find(iid);
}

HRESULT LoggedHelp::ShowContext(std::int32_t context) {
    return com::Guarded("aslhost", server::kCHMObjectId, [&] { show_(context); });
}

}  // namespace vlm::host
