#include <cstddef>
#include <cstdint>
#include <string>

#include "ReadAll.h"
#include "XlsxFile.h"
#include "support/TempFolder.h"

/// The XML inside an archive, which broken archives hide: shared texts, a zero byte, the sheet.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    static const vlm::test::TempFolder folder;
    static const std::string path = folder / "sheet.xlsx";
    const std::string bytes(reinterpret_cast<const char*>(data), size);
    const std::size_t zero = bytes.find('\0');
    const std::string texts = bytes.substr(0, zero);
    const std::string sheet = zero == std::string::npos ? std::string() : bytes.substr(zero + 1);
    vlm::test::XlsxFile file;
    file.SheetXml("F", "").Part("xl/sharedStrings.xml", texts).Part("xl/worksheets/sheet1.xml", sheet).Write(path);
    vlm::fuzz::ReadAll(path);
    return 0;
}
