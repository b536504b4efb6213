#include "ado/AdoConnection.h"
#include "values/Error.h"

namespace vlm::data::ado {

com::LateBound NewMachineRecordset() {
    throw Error("Su questo sistema le righe di una connessione altrui non si possono modificare.");
}

}  // namespace vlm::data::ado
