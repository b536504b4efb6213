#include "ForeignText.h"

namespace vlm::com {

HRESULT CoerceForeign(const VARIANT& text, VARTYPE type, Variant& target, LCID locale) {
    Variant converted;
    const HRESULT done = VariantChangeTypeEx(&converted.Get(), const_cast<VARIANT*>(&text), locale, 0, type);
    if (SUCCEEDED(done)) target = std::move(converted);
    return done;
}

}  // namespace vlm::com
