#pragma once

#include <memory>
#include <pugixml.hpp>
#include <string>
#include <vector>

#include "Relations.h"
#include "ZipPackage.h"
#include "workbooks/CellStyles.h"
#include "workbooks/LazyWorkbook.h"
#include "workbooks/TextPool.h"

namespace vlm::files {

class XlsxWorkbook : public LazyWorkbook {
public:
    /// Throws WorkbookFault.
    explicit XlsxWorkbook(const std::string& path);

protected:
    std::unique_ptr<Worksheet> ReadSheet(std::size_t index) override;

private:
    void ReadWorkbook(const std::string& part);
    void AddSheet(pugi::xml_node sheet, const Relations& relations);
    void ReadStyles(const std::string& part);
    void ReadTexts();

    ZipPackage package_;
    std::vector<std::string> sheetParts_;
    CellStyles styles_;
    std::string textsPart_;
    std::shared_ptr<TextPool> texts_;  // null until the first sheet is read
};

}  // namespace vlm::files
