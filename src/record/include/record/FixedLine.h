#pragma once

#include <cstddef>
#include <cstdint>
#include <cstring>
#include <string>
#include <string_view>

#include "values/Utf8.h"

namespace vlm {

enum class FieldRule {
    Blank,       // spaces
    Number,      // zero-filled on the left, rightmost characters kept
    Text,        // cut to the width, spaces after it
    RightText,   // cut to the width, spaces before it, as it stands
    Date,        // "ddmmyyyy"
    Amount,      // zero-filled on the left
    ShownDate,   // readable forms: dd/mm/yy
    ShownAmount  // right-aligned
};

/// Where a field stands, in characters from 1, and how it is written.
struct FieldPlace {
    int position;
    int length;
    FieldRule rule;
};

/// Bytes that end every line of a file: carriage return and line feed.
inline constexpr int kLineEndLength = 2;

/// The characters of a written line at a place; fewer, or none, of a line that is too short.
inline std::string_view FieldAt(std::string_view line, const FieldPlace& place) {
    return text::Mid(line, static_cast<std::size_t>(place.position), static_cast<std::size_t>(place.length));
}

/// A line under construction: fields are put from left to right over their places.
class FixedLine {
public:
    /// A new line, all spaces.
    FixedLine(std::string& out, int length) : out_(out) { out_.assign(static_cast<std::size_t>(length), ' '); }
    /// A line that is written already and goes on to be completed behind its last character that is not ASCII.
    static FixedLine Reopen(std::string& written, int length) { return FixedLine(written, Written{}, length); }

    /// The bytes of a place, to be filled with that many ASCII characters.
    char* Slot(const FieldPlace& place) noexcept { return out_.data() + Offset(place); }

    /// A text at the start of its place, cut to its width. A line of a file is one record: control characters in a
    /// text, line ends among them, become spaces.
    void Put(const FieldPlace& place, std::string_view value) {
        const auto width = static_cast<std::size_t>(place.length);
        if (value.size() > width) value = text::Left(value, width);
        const std::size_t offset = Offset(place);
        if (!IsPlain(value)) return PutUneven(offset, value);
        value.copy(out_.data() + offset, value.size());
    }

private:
    struct Written {};
    FixedLine(std::string& written, Written, int length)
        : out_(written), extra_(written.size() - static_cast<std::size_t>(length)) {}

    std::size_t Offset(const FieldPlace& place) const noexcept {
        return static_cast<std::size_t>(place.position) - 1 + extra_;
    }
    /// ASCII without control characters, as nearly every field is. May say no to a text that is plain.
    static bool IsPlain(std::string_view value) noexcept {
        constexpr std::uint64_t kHigh = 0x8080808080808080ULL;
        constexpr std::uint64_t kBlanks = 0x2020202020202020ULL;
        const char* at = value.data();
        std::size_t left = value.size();
        std::uint64_t bits = 0;
        for (; left >= 8; left -= 8, at += 8) {
            std::uint64_t block = 0;
            std::memcpy(&block, at, 8);
            bits |= block | (block - kBlanks);  // a byte below the blank borrows into its highest bit
        }
        std::uint64_t rest = kBlanks;
        if (left > 0) std::memcpy(&rest, at, left);
        bits |= rest | (rest - kBlanks);
        return (bits & kHigh) == 0;
    }
    /// What comes behind moves on by the bytes that `value` has beyond its characters.
    void PutUneven(std::size_t offset, std::string_view value) {
        const std::size_t more = value.size() - text::Length(value);
        out_.insert(offset, more, ' ');
        extra_ += more;
        char* at = out_.data() + offset;
        for (const char c : value) *at++ = static_cast<unsigned char>(c) < ' ' ? ' ' : c;
    }

    std::string& out_;
    std::size_t extra_ = 0;  // bytes so far beyond the characters so far
};

}  // namespace vlm
