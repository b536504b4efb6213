#pragma once

#include "databases/DatabaseWriter.h"
#include "demo/DemoClinicComuni.h"

namespace vlm::host {

/// Fills the master tables of a new `Aldra` database, whose schema is there: clinics (one of them without a team and
/// without a database), health authorities, months, comuni, exemptions, illnesses.
void FillMaster(DatabaseWriter& writer, const DemoClinicComuni& comuni);

/// The illnesses are numbered from 1; a prescription may also name one that is not in the table.
int DemoPathologyCount();

}  // namespace vlm::host
