#include "platform/files/spreadsheet/xls/OpenXls.h"

#include "platform/files/spreadsheet/WorkbookFault.h"
namespace vlm::files {
std::unique_ptr<Workbook> OpenXls(const std::string& path) { throw UnreadableWorkbook(path, "formato xls"); }
}  // namespace vlm::files
