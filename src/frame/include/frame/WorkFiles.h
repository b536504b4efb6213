#pragma once

#include <string>
#include <string_view>

#include "frame/Library.h"

namespace vlm {

/// A path for a new file in a folder below the host's working folder: a fresh temporary name ("rad1F3A0.tmp") that no
/// file has yet. The folder is created when it is missing; Error naming it when it cannot be.
std::string FreshWorkFile(const Library& library, std::string_view folder);

}  // namespace vlm
