#include "TextLayout.h"

#include <algorithm>

#include "values/Utf8.h"

namespace vlm::ui {

namespace {

constexpr std::size_t kWidest = 96;

std::string Repeat(std::string_view piece, std::size_t times) {
    std::string repeated;
    for (std::size_t i = 0; i < times; ++i) repeated += piece;
    return repeated;
}

void WrapLine(std::string_view line, std::size_t width, Lines& lines) {
    while (text::Length(line) > width) {
        const std::string_view head = text::Left(line, width + 1);
        std::size_t end = head.rfind(' ');
        if (end == std::string_view::npos || end == 0) end = line.find(' ', 1);
        if (end == std::string_view::npos) break;
        lines.emplace_back(text::TrimRight(line.substr(0, end)));
        line = text::TrimLeft(line.substr(end));
    }
    lines.emplace_back(line);
}

}  // namespace

std::string Fit(std::string_view text, std::size_t width) {
    if (text::Length(text) <= width) return std::string(text);
    return std::string(text::Left(text, width - 1)) + "…";
}

std::string PadRight(std::string text, std::size_t width) {
    const std::size_t length = text::Length(text);
    if (length < width) text.append(width - length, ' ');
    return text;
}

std::string PadLeft(const std::string& text, std::size_t width) {
    const std::size_t length = text::Length(text);
    return length < width ? std::string(width - length, ' ') + text : text;
}

Lines Wrap(std::string_view text, std::size_t width) {
    Lines lines;
    for (;;) {
        const std::size_t end = text.find_first_of("\r\n");
        WrapLine(text.substr(0, end), width, lines);
        if (end == std::string_view::npos) return lines;
        text.remove_prefix(end + (text.substr(end, 2) == "\r\n" ? 2 : 1));
    }
}

Lines Box(const std::string& title, const Lines& lines, const std::string& footer) {
    std::size_t width = std::max(text::Length(title) + 2, text::Length(footer));
    for (const std::string& line : lines) width = std::max(width, text::Length(line));
    width = std::min(width, kWidest);
    std::string heading;
    if (!title.empty()) heading.append(" ").append(Fit(title, width - 2)).append(" ");
    Lines box{"┌─" + heading + Repeat("─", width + 1 - text::Length(heading)) + "┐"};
    for (const std::string& line : lines) box.push_back("│ " + PadRight(Fit(line, width), width) + " │");
    if (!footer.empty()) box.push_back("│ " + PadLeft(Fit(footer, width), width) + " │");
    box.push_back("└" + Repeat("─", width + 2) + "┘");
    return box;
}

}  // namespace vlm::ui
