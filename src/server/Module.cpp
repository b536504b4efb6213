#include "Module.h"

#include "Composition.h"

namespace vlm::server {

namespace {

std::unique_ptr<Composition> WithoutHost() {
    VlmHost nothing{};
    nothing.size = sizeof nothing;
    return std::make_unique<Composition>(nothing);
}

}  // namespace

/// Lives until the library is unloaded. One that still has something of a host's then, because the process ends without
/// a word, is left as it is: the host's code may be gone before, and must not be called any more.
struct Module::Holder {
    Module* const module = new Module;
    ~Holder() {
        if (!module->hasHost_ && module->CanUnload()) delete module;
    }
};

Module& Module::Get() {
    static Holder holder;
    return *holder.module;
}

Module::Module() : composition_(WithoutHost()) { library_.emplace(composition_->Services()); }

Module::~Module() = default;

bool Module::SetHost(const VlmHost* host) {
    if (objects_ != 0) return false;
    std::unique_ptr<Composition> next = host != nullptr ? std::make_unique<Composition>(*host) : WithoutHost();
    composition_->TellOfSteps();
    library_.emplace(next->Services());
    composition_ = std::move(next);
    hasHost_ = host != nullptr;
    return true;
}

void Module::HelpShown(std::int32_t context) { composition_->HelpShown(context); }

void Module::Lock(bool lock) noexcept {
    if (lock) {
        ++locks_;
        return;
    }
    for (long locks = locks_; locks > 0 && !locks_.compare_exchange_weak(locks, locks - 1);) {
    }
}

bool Module::CanUnload() const noexcept {
    return objects_ == 0 && locks_ == 0 && !library_->Connection() && !composition_->HoldsObjects();
}

}  // namespace vlm::server
