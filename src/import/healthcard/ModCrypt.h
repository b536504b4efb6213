#pragma once

#include <string>
#include <string_view>

namespace vlm {

/// The reversible scrambling of the passwords that the host stores, on the codes of Windows ANSI. A plain text comes
/// back scrambled, with the character of code 1 in front; a scrambled one comes back plain; "" stays "". Throws Error
/// for a text so long that its codes leave the code page; the text is not in the error.
std::string CryptText(std::string_view value);

}  // namespace vlm
