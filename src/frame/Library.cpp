#include "frame/Library.h"

#include "platform/Error.h"

namespace vlm {

data::Connection& Library::RequireConnection() const {
    if (!connection_) throw Error("Connessione al database non impostata.");
    return *connection_;
}

}  // namespace vlm
