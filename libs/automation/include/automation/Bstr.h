#pragma once

#include <string>
#include <string_view>
#include <utility>

#include "automation/Automation.h"

namespace vlm::com {

using WideText = std::basic_string<OLECHAR>;
using WideView = std::basic_string_view<OLECHAR>;

/// UTF-16 and UTF-8. Half a surrogate pair and malformed bytes become U+FFFD.
WideText ToWide(std::string_view utf8);
std::string ToUtf8(WideView wide);
void AppendUtf8(WideView wide, std::string& out);
/// A null BSTR is an empty text; zero characters inside stay.
std::string ToUtf8(BSTR text);

/// An automation text that is freed with it.
class Bstr {
public:
    Bstr() = default;
    /// std::bad_alloc when memory is short.
    explicit Bstr(std::string_view utf8);
    Bstr(const Bstr&) = delete;
    Bstr& operator=(const Bstr&) = delete;
    Bstr(Bstr&& other) noexcept : text_(std::exchange(other.text_, nullptr)) {}
    Bstr& operator=(Bstr&& other) noexcept {
        std::swap(text_, other.text_);
        return *this;
    }
    ~Bstr() { SysFreeString(text_); }

    BSTR Get() const noexcept { return text_; }
    BSTR Detach() noexcept { return std::exchange(text_, nullptr); }
    /// Where a function puts the text that it hands out. Frees what is held.
    BSTR* Receive() noexcept {
        SysFreeString(std::exchange(text_, nullptr));
        return &text_;
    }
    std::string Text() const { return ToUtf8(text_); }

private:
    BSTR text_ = nullptr;
};

}  // namespace vlm::com
