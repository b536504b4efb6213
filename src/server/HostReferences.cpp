#include "HostReferences.h"

#include "Module.h"
#include "ado/AdoConnection.h"
#include "server/VlmASLServicesLib.h"
#include "values/Error.h"

namespace vlm::server {

data::ConnectionPtr HostConnection::Of(IDispatch* object) {
    if (object == nullptr) return nullptr;
    data::ConnectionPtr inner = data::ado::ConnectionOf(object);
    if (!inner) throw Error("Connection: l'oggetto non è una connessione.", DISP_E_TYPEMISMATCH);
    return std::make_shared<HostConnection>(com::Ref<IDispatch>(object), std::move(inner));
}

IDispatch* HostConnection::ObjectOf(const data::ConnectionPtr& connection) {
    const auto* host = dynamic_cast<const HostConnection*>(connection.get());
    if (host == nullptr) return nullptr;
    host->Here();
    return host->object_.Share();
}

data::Connection& HostConnection::Here() const {
    if (std::this_thread::get_id() == thread_) return *inner_;
    throw Error("La connessione appartiene a un altro thread: impostare Connection anche in questo.");
}

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

void HelpReference::ShowContext(std::int32_t context) {
    calls_.Call("ShowContext", {com::Variant(context)});
    Module::Get().HelpShown(context);
}

}  // namespace vlm::server
