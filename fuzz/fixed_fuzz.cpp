#include "ImportReading.h"

/// A fixed-width list, read by every authority's own format.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    static vlm::fuzz::ImportReading reading;
    const std::string list = reading.Write("elenco.txt", std::string(reinterpret_cast<const char*>(data), size));
    for (const int entry : {10, 16, 22, 23, 24, 25, 27, 28}) reading.ReadEntry(list, entry);
    return 0;
}
