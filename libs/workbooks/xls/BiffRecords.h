#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "workbooks/CellTable.h"

namespace vlm::files {

/// Kinds of records that a workbook's cells and texts are in.
enum class BiffType : std::uint16_t {
    Formula = 0x0006,
    EndOfPart = 0x000A,
    DateMode = 0x0022,
    FilePass = 0x002F,
    Continue = 0x003C,
    CodePage = 0x0042,
    BoundSheet = 0x0085,
    MulRk = 0x00BD,
    MulBlank = 0x00BE,
    RString = 0x00D6,
    Xf = 0x00E0,
    SharedTexts = 0x00FC,
    LabelShared = 0x00FD,
    Blank = 0x0201,
    Number = 0x0203,
    Label = 0x0204,
    BoolErr = 0x0205,
    String = 0x0207,
    Rk = 0x027E,
    Format = 0x041E,
    StartOfPart = 0x0809
};

struct BiffRecord {
    BiffType type{};
    std::string_view data;
};

/// The records of a stream, one after the other.
class BiffRecords {
public:
    BiffRecords(std::string_view stream, std::size_t offset) : stream_(stream), at_(offset) {}

    /// Throws WorkbookFault where the stream ends, which it may not do before its closing record.
    BiffRecord Next();
    /// Where the next record starts.
    std::size_t Offset() const noexcept { return at_; }
    /// The record's data and that of the records which continue it.
    std::vector<std::string_view> WithContinuations(const BiffRecord& record);

private:
    std::string_view stream_;
    std::size_t at_;
};

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
void ReadSharedTexts(std::vector<std::string_view> parts, SharedTexts& texts);

}  // namespace vlm::files
