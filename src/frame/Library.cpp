#include "frame/Library.h"

#include "values/Error.h"

namespace vlm {

data::Connection& Library::RequireConnection() const {
    if (!connection_) throw Error("Connessione al database non impostata.");
    return *connection_;
}

}  // namespace vlm
