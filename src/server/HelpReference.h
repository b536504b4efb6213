#pragma once

#include <memory>

#include "automation/LateBound.h"
#include "frame/HostServices.h"

namespace vlm::server {

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
