#include "files/Paths.h"

namespace vlm::files {

std::filesystem::path ToNative(std::string_view path) { return std::u8string(path.begin(), path.end()); }

std::string ToLibrary(std::string_view path) { return std::string(path); }

}  // namespace vlm::files
