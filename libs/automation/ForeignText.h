#pragma once

#include "automation/Variant.h"

namespace vlm::com {

/// A text that is not Italian, as another type.
HRESULT CoerceForeign(const VARIANT& text, VARTYPE type, Variant& target, LCID locale);

}  // namespace vlm::com
