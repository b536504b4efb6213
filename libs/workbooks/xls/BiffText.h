#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "workbooks/TextPool.h"

namespace vlm::files {

/// Texts of a record and those which continue it. A text that goes on in the next record says there anew whether its
/// characters take one byte or two.
class BiffText {
public:
    /// `unicode`: the texts of version 8; before, texts are bytes of code page 1252.
    BiffText(std::vector<std::string_view> parts, bool unicode) : parts_(std::move(parts)), unicode_(unicode) {}

    bool AtEnd();
    void Skip(std::size_t bytes);
    /// A text with its length before it, in one byte or in two. Throws WorkbookFault when it is cut off.
    std::string ReadShort() { return Read(Byte()); }
    std::string ReadLong() { return Read(Word()); }

private:
    std::string Read(std::size_t characters);
    std::string ReadUnits(std::size_t count, bool wide);
    std::uint8_t Byte();
    std::uint16_t Word();
    void NeedMore();

    std::vector<std::string_view> parts_;
    bool unicode_;
    std::size_t part_ = 0;
    std::size_t at_ = 0;
};

/// The texts that all sheets share, from the record that lists them: as many as are there, whatever it counts.
void ReadSharedTexts(std::vector<std::string_view> parts, TextPool& texts);

}  // namespace vlm::files
