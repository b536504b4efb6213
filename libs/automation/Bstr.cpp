#include "automation/Bstr.h"

#include <new>

#include "values/Utf16.h"

namespace vlm::com {

WideText ToWide(std::string_view utf8) { return text::ToUtf16<OLECHAR>(utf8); }

void AppendUtf8(WideView wide, std::string& utf8) { text::AppendFromUtf16(wide, utf8); }

std::string ToUtf8(WideView wide) { return text::FromUtf16(wide); }

std::string ToUtf8(BSTR text) { return text == nullptr ? std::string() : ToUtf8(WideView(text, SysStringLen(text))); }

Bstr::Bstr(std::string_view utf8) {
    const WideText wide = ToWide(utf8);
    text_ = SysAllocStringLen(wide.data(), static_cast<UINT>(wide.size()));
    if (text_ == nullptr) throw std::bad_alloc();
}

}  // namespace vlm::com
