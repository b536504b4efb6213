#include "database/Connection.h"

#include "values/Error.h"

namespace vlm::data {

UpdatableRecordsetPtr Connection::OpenForUpdate(std::string_view) {
    throw Error("Le righe di questa connessione non si possono modificare.");
}

}  // namespace vlm::data
