#pragma once

#include <memory>

#include "automation/Ref.h"
#include "frame/HostServices.h"

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

}  // namespace vlm::server
