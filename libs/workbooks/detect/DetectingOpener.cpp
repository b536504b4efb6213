#include "detect/DetectingOpener.h"

#include <array>
#include <cerrno>

#include "files/Machine.h"
#include "files/Paths.h"
#include "workbooks/WorkbookFault.h"
#include "xls/OpenXls.h"
#if __has_include("xlsx/OpenXlsx.h")  // not where the spreadsheet program itself reads workbooks
#include "xlsx/OpenXlsx.h"
#define VLM_XLSX
#endif

namespace vlm::files {

namespace {

std::string FirstBytes(const std::string& path) {
    errno = 0;
    const bool isFile = IsFile(path);
    const OpenFile file = isFile ? machine::OpenToRead(ToNative(path)) : nullptr;
    if (!file) throw Error("Impossibile aprire il file " + path + ": " + ReasonOf(errno != 0 ? errno : EISDIR) + ".");
    std::array<char, 4> bytes{};
    return {bytes.data(), std::fread(bytes.data(), 1, bytes.size(), file.get())};
}

}  // namespace

std::unique_ptr<Workbook> DetectingOpener::Open(const std::string& path) const {
    const std::string start = FirstBytes(path);
#ifdef VLM_XLSX
    if (start.starts_with("PK")) return OpenXlsx(path);
#endif
    if (start == "\xD0\xCF\x11\xE0") return OpenXls(path);
    throw UnreadableWorkbook(path, start.empty() ? "il file è vuoto" : "il suo formato non è né xlsx né xls");
}

}  // namespace vlm::files
