#include "ForeignText.h"

namespace vlm::com {

HRESULT CoerceForeign(const VARIANT& text, VARTYPE type, Variant& target, LCID) { return Coerce(text, type, target); }

}  // namespace vlm::com
