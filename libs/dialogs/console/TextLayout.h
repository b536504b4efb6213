#pragma once

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

/// Text set in columns of characters, for a terminal.
namespace vlm::ui {

using Lines = std::vector<std::string>;

/// Cut to `width` characters, the last being "…" when something is lost.
std::string Fit(std::string_view text, std::size_t width);
/// Filled with blanks to `width` characters; a longer text stays.
std::string PadRight(std::string text, std::size_t width);
std::string PadLeft(const std::string& text, std::size_t width);
/// Parted at line breaks (CR LF, CR or LF) and between words, so that no line has more than `width` characters unless
/// one word has.
Lines Wrap(std::string_view text, std::size_t width);
/// A frame with a title in its upper edge around the lines; `footer` stands at the right below them, when there is one.
Lines Box(const std::string& title, const Lines& lines, const std::string& footer);

}  // namespace vlm::ui
