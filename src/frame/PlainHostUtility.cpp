#include "frame/PlainHostUtility.h"

#include "database/SqlTokens.h"

namespace vlm {

std::string PlainHostUtility::SqlDate(Date date, int /*option*/) const { return "'" + IsoDate(date) + "'"; }

std::string PlainHostUtility::SqlString(std::string_view value) const { return data::SqlTextLiteral(value); }

}  // namespace vlm
