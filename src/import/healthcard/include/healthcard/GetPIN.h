#pragma once

#include <cstdint>
#include <string>

#include "frame/Library.h"

namespace vlm {

/// The specialist's PIN: the one last confirmed, else what the user types now; "" when the user cancels. `forceNew`
/// forgets the one that is kept.
std::string GetPIN(Library& library, std::int32_t specialist, bool forceNew);

}  // namespace vlm
