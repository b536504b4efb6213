#pragma once

#include <string>
#include <string_view>

/// The Windows ANSI code page, which exists only at the edge of a file.
namespace vlm::text {

/// Appends `utf8` in code page 1252: one byte a character, "?" for a character that has no code there.
void AppendAnsi(std::string_view utf8, std::string& out);
std::string ToAnsi(std::string_view utf8);

/// Appends `ansi` as UTF-8. The five unassigned codes (81, 8D, 8F, 90, 9D) give the control character of that number.
void AppendFromAnsi(std::string_view ansi, std::string& out);
std::string FromAnsi(std::string_view ansi);

}  // namespace vlm::text
