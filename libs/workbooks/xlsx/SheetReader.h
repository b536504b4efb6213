#pragma once

#include <pugixml.hpp>
#include <string>

#include "workbooks/CellStyles.h"
#include "workbooks/CellTable.h"

namespace vlm::files {

/// Puts the cells of a sheet's rows into a table.
class SheetReader {
public:
    SheetReader(const CellStyles& styles, CellTable& table) : styles_(styles), table_(table) {}
    /// Throws WorkbookFault naming the cell.
    void ReadRow(pugi::xml_node row);

private:
    std::uint32_t RowOf(pugi::xml_node row) const;
    CellPlace PlaceOf(pugi::xml_node cell) const;
    void ReadCell(pugi::xml_node cell, CellPlace place);
    SheetValue NumberOf(std::string_view content, pugi::xml_node cell, CellPlace place) const;

    const CellStyles& styles_;
    CellTable& table_;
    CellPlace last_;
};

}  // namespace vlm::files
