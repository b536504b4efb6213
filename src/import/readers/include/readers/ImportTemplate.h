#pragma once

#include <map>
#include <string>
#include <string_view>

namespace vlm {

/// A template file: what kind of source it describes, and its keys. Templates are text files that the clinic writes by
/// hand, one for each format of its authority:
///
///   [FILETYPE]=TD
///   [DELIMITER]=;
///   [Cognome]=1
///
/// A line that holds "[FILETYPE]" gives the type, the last one counts. A line that begins with "[" and holds "=" gives
/// a key; any other line is a remark. Blanks around a value do not count, tabs do.
class ImportTemplate {
public:
    /// Throws Error for a file that cannot be read and for a key that is given twice.
    static ImportTemplate Load(const std::string& path);

    /// "E" workbook, "TD" delimited text, "TF" fixed-width text; anything else reads nothing.
    const std::string& FileType() const noexcept { return fileType_; }
    /// "" when the template has no such key. Keys compare without regard to case.
    const std::string& GetTemplateValue(std::string_view key) const;

private:
    void TakeLine(std::string_view line);

    std::string fileType_;
    std::map<std::string, std::string> values_;  // by key in small letters
};

}  // namespace vlm
