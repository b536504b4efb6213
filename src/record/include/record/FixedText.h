#pragma once

#include <cstddef>
#include <cstring>
#include <string_view>

#include "values/Utf8.h"

namespace vlm {

/// A field that holds exactly `Width` characters: a shorter text is filled with spaces on the right, a longer one cut.
/// Assigning allocates nothing.
template <std::size_t Width>
class FixedText {
public:
    FixedText() { Assign({}); }
    /// Plain characters, at most as many as the width, for a constant.
    template <std::size_t Size>
    requires(Size <= Width + 1) explicit constexpr FixedText(const char (&plain)[Size]) : size_(Width) {
        for (std::size_t i = 0; i < Width; ++i) bytes_[i] = i + 1 < Size ? plain[i] : ' ';
    }
    explicit FixedText(std::string_view value) { Assign(value); }
    FixedText& operator=(std::string_view value) {
        Assign(value);
        return *this;
    }

    /// Two fields of fixed width, one behind the other.
    template <std::size_t First, std::size_t Second>
    void AssignParts(const FixedText<First>& first, const FixedText<Second>& second) noexcept {
        static_assert(First + Second == Width);
        const std::string_view left = first.View();
        const std::string_view right = second.View();
        left.copy(bytes_, left.size());
        right.copy(bytes_ + left.size(), right.size());
        size_ = left.size() + right.size();
    }
    /// The text in capitals.
    void AssignUpper(std::string_view value) {
        if (!text::IsAscii(value)) return Assign(text::ToUpper(text::Left(value, Width)));
        Assign(value);
        for (std::size_t i = 0; i < Width; ++i) {
            char& c = bytes_[i];
            if (c >= 'a' && c <= 'z') c = static_cast<char>(c - 'a' + 'A');
        }
    }

    /// All characters of the field.
    std::string_view View() const noexcept { return {bytes_, size_}; }
    /// ASCII without control characters: a byte for each character of the width.
    bool IsPlain() const noexcept { return size_ == Width; }
    std::string_view Trimmed() const noexcept { return text::Trim(View()); }
    bool IsEmpty() const noexcept { return Trimmed().empty(); }

private:
    void Assign(std::string_view value) noexcept {
        if (value.size() <= Width && text::IsAscii(value)) {
            std::size_t i = 0;
            // Control characters have no place in a line of a file.
            for (; i < value.size(); ++i) bytes_[i] = value[i] < ' ' ? ' ' : value[i];
            for (; i < Width; ++i) bytes_[i] = ' ';
            size_ = Width;
            return;
        }
        const std::string_view kept = text::Left(value, Width);
        if (!kept.empty()) std::memmove(bytes_, kept.data(), kept.size());
        size_ = kept.size();
        const std::size_t blanks = Width - text::Length(kept);
        std::memset(bytes_ + size_, ' ', blanks);
        size_ += blanks;
    }

    char bytes_[Width * 4] = {};  // a character takes at most four bytes
    std::size_t size_ = 0;
};

}  // namespace vlm
