#include "frame/PlainHostUtility.h"

namespace vlm {

std::string PlainHostUtility::SqlDate(Date date, int /*option*/) const { return "'" + IsoDate(date) + "'"; }

std::string SqlText(std::string_view value) {
    std::string literal = "'";
    for (const char c : value) literal.append(c == '\'' ? 2 : 1, c);
    return literal + "'";
}

}  // namespace vlm
