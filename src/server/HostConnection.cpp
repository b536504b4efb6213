#include "HostConnection.h"

#include "ado/AdoConnection.h"
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
    return host == nullptr ? nullptr : host->object_.Share();
}

}  // namespace vlm::server
