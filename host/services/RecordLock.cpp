#include "RecordLock.h"

namespace vlm::host {

RecordLock::RecordLock(const HostObjectPtr& service, std::string_view table, std::int32_t key)
    : table_(table), key_(key) {
    auto* const object = service == nullptr ? nullptr : static_cast<IDispatch*>(service->Native());
    if (object == nullptr) return;
    com::LateBound calls{com::Ref<IDispatch>(object)};
    calls.Call("LockRecord", {table_, key_});
    service_ = std::move(calls);
}

RecordLock::~RecordLock() {
    try {
        if (service_) service_.Call("UnlockRecord", {table_, key_});
    } catch (...) {  // the same user takes it over next time
    }
}

}  // namespace vlm::host
