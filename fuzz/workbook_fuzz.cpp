#include <cstddef>
#include <cstdint>
#include <string>
#include <sys/mman.h>
#include <unistd.h>

#include "platform/Error.h"
#include "platform/files/spreadsheet/detect/DetectingOpener.h"

namespace {

/// A file in memory that has a path.
class MemoryFile {
public:
    MemoryFile(const std::uint8_t* bytes, std::size_t size) : descriptor_(::memfd_create("workbook", 0)) {
        for (std::size_t at = 0; at < size;) {
            const ssize_t written = ::write(descriptor_, bytes + at, size - at);
            if (written <= 0) break;
            at += static_cast<std::size_t>(written);
        }
    }
    MemoryFile(const MemoryFile&) = delete;
    MemoryFile& operator=(const MemoryFile&) = delete;
    ~MemoryFile() { ::close(descriptor_); }
    std::string Path() const { return "/proc/self/fd/" + std::to_string(descriptor_); }

private:
    int descriptor_;
};

void ReadAll(vlm::files::Workbook& workbook) {
    constexpr std::uint32_t kRows = 200;
    constexpr std::uint32_t kColumns = 16;
    for (int number = 1; number <= workbook.WorksheetCount() && number <= 8; ++number) {
        const vlm::files::Worksheet& sheet = workbook.Sheet(number);
        for (std::uint32_t row = 1; row <= sheet.LastRow() && row <= kRows; ++row) {
            for (std::uint32_t column = 1; column <= kColumns; ++column) vlm::files::TextOf(sheet.Cell(row, column));
        }
        vlm::files::TextOf(sheet.Cell(sheet.LastRow(), 1));
    }
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const MemoryFile file(data, size);
    try {
        ReadAll(*vlm::files::DetectingOpener().Open(file.Path()));
    } catch (const vlm::Error&) {  // the one way to end that is right
    }
    return 0;
}
