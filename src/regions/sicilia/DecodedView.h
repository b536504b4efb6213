#pragma once

#include <cstdint>
#include <string>

#include "frame/Library.h"

namespace vlm::sicilia {

/// Writes the readable copy of an export file, its name followed by ".tmp", into the working folder and opens it in
/// the text editor. False, and nothing is written, when there is no such file. Errors throw; nothing is started then.
/// Short lines, or a file of another layout, show what can be read.
bool ShowDecodedView(const Library& library, const std::string& fileName, std::int32_t kind);

}  // namespace vlm::sicilia
