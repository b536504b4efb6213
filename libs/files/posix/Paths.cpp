#include "files/Paths.h"

#include <algorithm>

namespace vlm::files {

std::filesystem::path ToNative(std::string_view path) {
    std::string native(path);
    std::replace(native.begin(), native.end(), '\\', '/');
    return native;
}

std::string ToLibrary(std::string_view path) {
    std::string result(path);
    std::replace(result.begin(), result.end(), '/', '\\');
    return result;
}

}  // namespace vlm::files
