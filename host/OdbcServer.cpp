#include "host/OdbcServer.h"

#include "platform/Error.h"

namespace vlm::host {

data::ConnectionPtr OpenOdbc(const std::string&, const std::string& database) {
    throw Error("Impossibile aprire il database \"" + database + "\": questa versione non si collega per ODBC.");
}

}  // namespace vlm::host
