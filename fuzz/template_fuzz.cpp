#include "ImportReading.h"

/// A template of the clinic's own, then, behind a zero byte, the list that it describes.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    static vlm::fuzz::ImportReading reading;
    const std::string bytes(reinterpret_cast<const char*>(data), size);
    const std::size_t zero = bytes.find('\0');
    const std::string format = reading.Write("modello.ACF", bytes.substr(0, zero));
    const std::string list = reading.Write("elenco.txt", zero == std::string::npos ? "" : bytes.substr(zero + 1));
    reading.ReadWith(list, format);
    return 0;
}
