#pragma once

#include <string>
#include <string_view>

/// Texts of a source as the element list keeps them.
namespace vlm {

/// The words of a text parted by single blanks; "" when there are fewer than two.
std::string JoinWords(std::string_view value);
/// The acute and the grave accent, written where an apostrophe is meant, become one.
std::string WithApostrophes(std::string_view value);
/// E1 to E5 as E01 to E05; any other code as it is.
std::string ExemptionCode(std::string_view value);

}  // namespace vlm
