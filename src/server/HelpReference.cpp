#include "HelpReference.h"

#include "server/VlmASLServicesLib.h"
#include "values/Error.h"

namespace vlm::server {

std::shared_ptr<HelpObject> HelpReference::Of(IDispatch* object) {
    if (object == nullptr) return nullptr;
    if (!com::Query<IUnknown>(object, kCHMObjectId)) {
        throw Error("CHMObject: l'oggetto non è la guida dell'applicazione.", DISP_E_TYPEMISMATCH);
    }
    return std::make_shared<HelpReference>(com::Ref<IDispatch>(object));
}

IDispatch* HelpReference::ObjectOf(const std::shared_ptr<HelpObject>& help) {
    const auto* reference = dynamic_cast<const HelpReference*>(help.get());
    return reference == nullptr ? nullptr : reference->calls_.Object().Share();
}

void HelpReference::SetWindow(std::intptr_t windowHandle) {
    // Window handles have 32 significant bits, also where they are stored in 64.
    calls_.Put("hWnd", com::Variant(static_cast<std::int32_t>(windowHandle)));
}

}  // namespace vlm::server
