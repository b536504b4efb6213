#pragma once

#include <map>
#include <string>
#include <vector>

#include "workbooks/Workbook.h"

namespace vlm::test {

/// Rows of cells as a sheet shows them, from row 1 and column 1.
using SheetRows = std::vector<std::vector<files::SheetValue>>;

/// An xlsx workbook in the making: whole from rows of values, or part by part.
class XlsxFile {
public:
    /// Adds a sheet of values; texts go into the shared texts, dates get the date style 1.
    XlsxFile& Sheet(const std::string& name, const SheetRows& rows);
    /// Adds a sheet whose rows are given as XML ("<row>...</row>").
    XlsxFile& SheetXml(const std::string& name, const std::string& rows);
    /// Puts a part in place of the one that would be written, or beside it.
    XlsxFile& Part(const std::string& name, const std::string& content);
    XlsxFile& Without(const std::string& name);
    /// Texts for cells of type "s", as XML of `si` elements, before those of Sheet.
    XlsxFile& SharedXml(const std::string& items);

    void Write(const std::string& path) const;

private:
    std::string CellXml(const files::SheetValue& value, const std::string& place);

    std::vector<std::pair<std::string, std::string>> sheets_;  // name, XML of the rows
    std::map<std::string, std::string> parts_;
    std::vector<std::string> left_;
    std::string shared_;
    std::size_t sharedCount_ = 0;
};

}  // namespace vlm::test
