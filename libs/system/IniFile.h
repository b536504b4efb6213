#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace vlm::sys {

/// The lines of an ini file as they stand, whoever wrote them. Sections and keys compare without regard to case; the
/// value is all that follows "=", blanks too. "\r", "\n" and "\\" in it stand for line breaks and "\".
class IniFile {
public:
    /// A byte-order mark is passed over; lines may end in LF or CR LF.
    explicit IniFile(std::string_view content);

    std::optional<std::string> Find(std::string_view section, std::string_view key) const;
    /// Replaces the key's line, or adds it at the end of its section.
    void Put(std::string_view section, std::string_view key, std::string_view value);
    /// Every line ends in LF.
    std::string Content() const;

private:
    std::pair<std::size_t, std::size_t> LinesOf(std::string_view section) const;
    std::size_t LineOf(std::string_view key, std::size_t first, std::size_t last) const;

    std::vector<std::string> lines_;
};

}  // namespace vlm::sys
