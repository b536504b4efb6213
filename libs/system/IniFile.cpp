#include "IniFile.h"

#include <algorithm>

#include "values/Utf8.h"

namespace vlm::sys {

namespace {

constexpr std::string_view kByteOrderMark = "\xEF\xBB\xBF";

std::string Escape(std::string_view value) {
    std::string escaped;
    for (const char each : value) {
        if (each == '\r') {
            escaped += "\\r";
        } else if (each == '\n') {
            escaped += "\\n";
        } else if (each == '\\') {
            escaped += "\\\\";
        } else {
            escaped += each;
        }
    }
    return escaped;
}

std::string Unescape(std::string_view escaped) {
    std::string value;
    for (std::size_t i = 0; i < escaped.size(); ++i) {
        if (escaped[i] != '\\' || i + 1 == escaped.size()) {
            value += escaped[i];
            continue;
        }
        const char next = escaped[++i];
        if (next == 'r') {
            value += '\r';
        } else if (next == 'n') {
            value += '\n';
        } else {
            if (next != '\\') value += '\\';  // written by hand: a path whose "\" nobody doubled
            value += next;
        }
    }
    return value;
}

std::string Heading(std::string_view section) {
    std::string heading = "[";
    heading.append(section);
    return heading += ']';
}

}  // namespace

IniFile::IniFile(std::string_view content) {
    if (content.starts_with(kByteOrderMark)) content.remove_prefix(kByteOrderMark.size());
    while (!content.empty()) {
        const std::size_t end = std::min(content.find('\n'), content.size());
        const std::string_view line = content.substr(0, end);
        lines_.emplace_back(line.ends_with('\r') ? line.substr(0, line.size() - 1) : line);
        content.remove_prefix(std::min(end + 1, content.size()));
    }
}

std::optional<std::string> IniFile::Find(std::string_view section, std::string_view key) const {
    const auto [first, last] = LinesOf(section);
    const std::size_t line = LineOf(key, first, last);
    if (line == last) return std::nullopt;
    return Unescape(std::string_view(lines_[line]).substr(lines_[line].find('=') + 1));
}

void IniFile::Put(std::string_view section, std::string_view key, std::string_view value) {
    const std::string entry = std::string(key) + "=" + Escape(value);
    const auto [first, last] = LinesOf(section);
    const std::size_t line = LineOf(key, first, last);
    if (line != last) {
        lines_[line] = entry;
    } else if (first == 0) {
        if (!lines_.empty() && !lines_.back().empty()) lines_.emplace_back();
        lines_.push_back(Heading(section));
        lines_.push_back(entry);
    } else {
        std::size_t place = last;
        while (place > first && lines_[place - 1].empty()) --place;
        lines_.insert(lines_.begin() + static_cast<std::ptrdiff_t>(place), entry);
    }
}

std::string IniFile::Content() const {
    std::string content;
    for (const std::string& line : lines_) content += line + "\n";
    return content;
}

/// The lines below the section's heading; {0, 0} when there is no such section.
std::pair<std::size_t, std::size_t> IniFile::LinesOf(std::string_view section) const {
    const std::string heading = Heading(section);
    std::size_t first = 0;
    while (first < lines_.size() && !text::EqualNoCase(lines_[first], heading)) ++first;
    if (first == lines_.size()) return {0, 0};
    std::size_t last = ++first;
    while (last < lines_.size() && !lines_[last].starts_with('[')) ++last;
    return {first, last};
}

/// `last` when there is no such key.
std::size_t IniFile::LineOf(std::string_view key, std::size_t first, std::size_t last) const {
    for (; first < last; ++first) {
        const std::string_view line = lines_[first];
        const std::size_t sign = line.find('=');
        if (sign != std::string_view::npos && text::EqualNoCase(line.substr(0, sign), key)) break;
    }
    return first;
}

}  // namespace vlm::sys
