#include "database/ForwardingRecordset.h"

#include <string>

#include "values/Error.h"

namespace vlm::data {

int ForwardingRecordset::Checked(int ordinal) const {
    if (ordinal >= 0 && ordinal < FieldCount()) return ordinal;
    throw Error("La colonna numero " + std::to_string(ordinal) + " non esiste nelle righe lette.");
}

}  // namespace vlm::data
