#include <cstddef>
#include <cstdint>
#include <string>
#include <sys/mman.h>
#include <unistd.h>

#include "ReadAll.h"

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

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const MemoryFile file(data, size);
    vlm::fuzz::ReadAll(file.Path());
    return 0;
}
