#pragma once

#include <string>

#include "dialogs/PickList.h"
#include "frame/Library.h"

namespace vlm {

/// Reference tables that a pick list can show.
enum class PickListKind : std::int32_t { Specialists = 0, Branches = 1, Months = 2, Centres = 3, RevocationTypes = 4 };

/// Runs the list's row source and fills the list with its rows, every column as text. Errors of the query, a missing
/// column and a key beyond 32 bits are thrown and leave the list empty.
void LoadPickList(ui::PickList& list, data::Connection& connection);

/// Binds a pick list to a reference table on the library-wide connection and loads it. `condition` narrows the
/// specialists only and may be empty. An unknown kind loads the row source that the list has.
void FillPickList(const Library& library, ui::PickList& list, PickListKind kind, const std::string& condition = {});

/// Loads the specialists of a branch, by name; one who is the only one is chosen. Branch 0 has none.
void FillSpecialistsOfBranch(const Library& library, ui::PickList& list, std::int32_t idBranca);
/// The same with everybody's regional code in a column of its own ("CodiceRegionale"); branch 0 has everybody.
void FillSpecialistsWithCode(const Library& library, ui::PickList& list, std::int32_t idBranca);
/// The regional code of a branch: the one of the first specialist that the database names, of anybody for branch 0. ""
/// when there is none, or no open connection.
std::string GetCodiceRegionale(const Library& library, std::int32_t idBranca);

}  // namespace vlm
