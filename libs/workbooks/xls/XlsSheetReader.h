#pragma once

#include <optional>

#include "BiffRecords.h"
#include "workbooks/CellStyles.h"
#include "workbooks/CellTable.h"

namespace vlm::files {

/// Puts the cells of a sheet's records into a table.
class XlsSheetReader {
public:
    /// `unicode` as for BiffText.
    XlsSheetReader(const CellStyles& styles, bool unicode, CellTable& table)
        : styles_(styles), unicode_(unicode), table_(table) {}
    /// `records` stand before the sheet's opening record. Charts inside the sheet are passed over. Throws
    /// WorkbookFault.
    void Read(BiffRecords& records);

private:
    void ReadCell(const BiffRecord& record, BiffRecords& records);
    void ReadFormula(std::string_view data, CellPlace place);
    void ReadMulRk(std::string_view data, CellPlace place);
    void PutNumber(CellPlace place, double number, std::uint16_t style);

    const CellStyles& styles_;
    bool unicode_;
    CellTable& table_;
    std::optional<CellPlace> awaitsText_;  // a formula whose result is the text of a following record
};

}  // namespace vlm::files
