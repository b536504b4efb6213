#include "Module.h"

namespace vlm::server {

Module& Module::Get() {
    static Module module;
    return module;
}

Module::Module() { library_.emplace(host_->Services()); }

bool Module::SetServices(const Library::Services* services) {
    if (objects_ != 0) return false;
    library_.emplace(services != nullptr ? *services : host_->Services());
    return true;
}

void Module::Lock(bool lock) noexcept {
    if (lock) {
        ++locks_;
    } else if (locks_ > 0) {
        --locks_;
    }
}

}  // namespace vlm::server
