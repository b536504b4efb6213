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

/// The specialists with their branches, from "FROM" on.
inline constexpr const char* kSpecialistsOfBranch =
    " FROM Specialista INNER JOIN BrancaPerStudioPerSpecialista"
    " ON Specialista.IDSpecialista = BrancaPerStudioPerSpecialista.IDSpecialista";

/// Loads the specialists of a branch, by name; a specialist who is the only one is chosen. `furtherColumns` follow key
/// and name (", Specialista.CodiceRegionale"), `condition` is a whole WHERE clause; both may be empty. The list's key
/// and extra columns are the dialog's business.
void FillSpecialistsOfBranch(const Library& library, ui::PickList& list, const std::string& furtherColumns,
                             const std::string& condition);

}  // namespace vlm
