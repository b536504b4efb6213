#pragma once

#include <string>
#include <string_view>

namespace vlm::data::odbc {

/// The statement with the schema written out where a database is named without one: `Aldra..Comune` becomes
/// `Aldra.dbo.Comune`, for engines that do not take a column's name with an empty schema. Literals, comments and all
/// else stay as they are.
std::string WithSchema(std::string_view sql);

}  // namespace vlm::data::odbc
