#pragma once

#include <functional>

#include "automation/LateBound.h"

namespace vlm::data::ado {

/// Makes a row set that is closed and on no connection, as a host's own code would.
using RecordsetMaker = std::function<com::LateBound()>;

/// The machine's own row sets. Throws Error where there are none.
com::LateBound NewMachineRecordset();

}  // namespace vlm::data::ado
