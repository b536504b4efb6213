#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <cstring>
#include <string>
#include <string_view>

#include "values/Utf8.h"

/// Fixed-width layouts as tables. One table says where every field of a line stands and by which rule it is written;
/// the line is written from it and read back by it.
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

/// `last` is the field of the line that closes a document, where a layout has one; elsewhere it is the same as `field`.
template <class Field>
struct LayoutField : FieldPlace {
    Field field;
    Field last;

    constexpr LayoutField(int at, int width, FieldRule how, Field what) : LayoutField(at, width, how, what, what) {}
    constexpr LayoutField(int at, int width, FieldRule how, Field what, Field closing)
        : FieldPlace{at, width, how}, field(what), last(closing) {}
};

/// Checked at compile time: fields follow one another without overlap, the first starts at 1 or later, the last ends
/// at the line's length.
template <class Field, std::size_t N>
consteval bool IsLayoutOf(const std::array<LayoutField<Field>, N>& layout, int lineLength) {
    int next = 1;
    for (const LayoutField<Field>& row : layout) {
        if (row.position < next || row.length < 1) return false;
        next = row.position + row.length;
    }
    return next == lineLength + 1;
}

/// The characters of a written line at a place; fewer, or none, of a line that is too short.
inline std::string_view FieldAt(std::string_view line, const FieldPlace& place) {
    return text::Mid(line, static_cast<std::size_t>(place.position), static_cast<std::size_t>(place.length));
}

/// The same where `field` stands. The field must be in the layout.
template <auto field, std::size_t N, class Field>
std::string_view FieldOf(std::string_view line, const std::array<LayoutField<Field>, N>& layout) {
    for (const LayoutField<Field>& row : layout) {
        if (row.field == field || row.last == field) return FieldAt(line, row);
    }
    return {};
}

/// A line under construction: all spaces, then fields are put from left to right over their places.
class FixedLine {
public:
    FixedLine(std::string& out, int length) : out_(out) { out_.assign(static_cast<std::size_t>(length), ' '); }

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

/// Writes a whole line: `put(line, row, field)` puts one field's text into its place.
template <class Field, std::size_t N, class Put>
void WriteFields(std::string& out, const std::array<LayoutField<Field>, N>& layout, int lineLength, bool closing,
                 const Put& put) {
    FixedLine line(out, lineLength);
    for (const LayoutField<Field>& row : layout) {
        if (row.rule != FieldRule::Blank) put(line, row, closing ? row.last : row.field);
    }
}

}  // namespace vlm
