#pragma once

#include <cstdint>
#include <memory>
#include <string>
#include <vector>

#include "BiffRecords.h"
#include "workbooks/CellStyles.h"
#include "workbooks/LazyWorkbook.h"
#include "workbooks/TextPool.h"

namespace vlm::files {

/// Versions 5 and 8 of the binary format.
class XlsWorkbook : public LazyWorkbook {
public:
    /// Throws WorkbookFault.
    explicit XlsWorkbook(const std::string& path);

protected:
    std::unique_ptr<Worksheet> ReadSheet(std::size_t index) override;

private:
    void ReadGlobals();
    void ReadVersion(std::string_view data);
    void ReadGlobal(const BiffRecord& record, BiffRecords& records);
    void AddFormat(const BiffRecord& record);

    std::string stream_;
    bool unicode_ = true;
    std::uint16_t codePage_ = 1252;
    CellStyles styles_;
    std::shared_ptr<TextPool> texts_ = std::make_shared<TextPool>();
    std::vector<std::uint32_t> sheetOffsets_;
    std::size_t bytesRead_ = 0;  // by all sheets so far
};

}  // namespace vlm::files
