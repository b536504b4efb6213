#include "ImportReading.h"

/// A fixed-width list, read by every authority's own format.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    static vlm::fuzz::ImportReading reading;
    const std::string list = reading.Write("elenco.txt", std::string(reinterpret_cast<const char*>(data), size));
    reading.ReadAs(list, vlm::SourceKind::FixedWidth);
    return 0;
}
