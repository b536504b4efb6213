#pragma once

#include <map>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "readers/SourceFormat.h"

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

    bool LacksDelimiter() const { return fileType_ == "TD" && GetTemplateValue("DELIMITER").empty(); }
    /// What the template describes; nothing for a type that is not known. Positions are 1, 2, ... ("TD"),
    /// "start,length" ("TF") or a column's letters ("E"). Throws Error naming the key for a position that no source can
    /// have.
    std::optional<SourceFormat> Format() const;

private:
    void TakeLine(std::string_view line);

    std::string fileType_;
    std::map<std::string, std::string> values_;  // by key in small letters
};

/// The folder of the clinic's template files, below the host's installation folder.
class TemplateFolder {
public:
    static constexpr std::string_view kPatientLists = ".ACF";
    static constexpr std::string_view kExemptionLists = ".ECF";

    explicit TemplateFolder(const std::string& installFolder) : path_(installFolder + "\\Import\\") {}

    /// Names without extension of the templates of one kind, in the folder's alphabetical order.
    std::vector<std::string> Names(std::string_view extension) const;
    /// The path of a template, whether or not it is there. Where the machine tells small letters from capitals the
    /// file's own spelling counts.
    std::string PathOf(const std::string& name, std::string_view extension) const;

private:
    std::string path_;
};

}  // namespace vlm
