#include "platform/automation/Bstr.h"

#include <new>

#include "platform/text/Utf8.h"

namespace vlm::com {

static_assert(sizeof(OLECHAR) == 2);

namespace {

constexpr char32_t kPairStart = 0x10000;

bool IsHigh(char32_t unit) { return unit >= 0xD800 && unit < 0xDC00; }
bool IsLow(char32_t unit) { return unit >= 0xDC00 && unit < 0xE000; }

}  // namespace

WideText ToWide(std::string_view utf8) {
    WideText wide;
    wide.reserve(utf8.size());
    const std::size_t plain = text::AsciiPrefix(utf8);
    for (const char each : utf8.substr(0, plain)) wide += static_cast<OLECHAR>(each);
    for (std::string_view rest = utf8.substr(plain); !rest.empty();) {
        const char32_t character = text::Decode(rest);
        if (character < kPairStart) {
            wide += static_cast<OLECHAR>(character);
            continue;
        }
        wide += static_cast<OLECHAR>(0xD800 + ((character - kPairStart) >> 10));
        wide += static_cast<OLECHAR>(0xDC00 + ((character - kPairStart) & 0x3FF));
    }
    return wide;
}

void AppendUtf8(WideView wide, std::string& utf8) {
    for (std::size_t i = 0; i < wide.size(); ++i) {
        const char32_t unit = static_cast<char16_t>(wide[i]);
        if (unit < 0x80) {
            utf8 += static_cast<char>(unit);
        } else if (IsHigh(unit) && i + 1 < wide.size() && IsLow(static_cast<char16_t>(wide[i + 1]))) {
            const char32_t low = static_cast<char16_t>(wide[++i]);
            text::Encode(kPairStart + ((unit - 0xD800) << 10) + (low - 0xDC00), utf8);
        } else {
            text::Encode(IsHigh(unit) || IsLow(unit) ? text::kReplacement : unit, utf8);
        }
    }
}

std::string ToUtf8(WideView wide) {
    std::string utf8;
    utf8.reserve(wide.size());
    AppendUtf8(wide, utf8);
    return utf8;
}

std::string ToUtf8(BSTR text) { return text == nullptr ? std::string() : ToUtf8(WideView(text, SysStringLen(text))); }

Bstr::Bstr(std::string_view utf8) {
    const WideText wide = ToWide(utf8);
    text_ = SysAllocStringLen(wide.data(), static_cast<UINT>(wide.size()));
    if (text_ == nullptr) throw std::bad_alloc();
}

}  // namespace vlm::com
