#pragma once

#include <cstdint>
#include <string>
#include <string_view>

#include "files/Machine.h"

namespace vlm::files {

/// Lines of a text file, one after the other, as UTF-8. The file is read in blocks as Windows ANSI, or as UTF-8 when it
/// starts with that mark. A line ends at a line feed, a carriage return before it belongs to the line end; the last
/// line needs no line end.
class LineReader {
public:
    /// Throws Error naming the path when the file cannot be opened.
    explicit LineReader(const std::string& path);

    /// Size of the file in bytes when it was opened.
    std::uint64_t FileSize() const noexcept { return size_; }
    bool AtEnd();
    /// The next line, valid until the next call. Call only when not AtEnd.
    std::string_view ReadLine();
    /// Whether the line just read ended at a carriage return and line feed; false for a line feed alone and for a last
    /// line without an end.
    bool EndedWithCarriageReturn() const noexcept { return carriageReturn_; }
    /// Line feeds in the whole file, whatever was read so far.
    std::uint64_t CountLineFeeds();

    /// Where the next line starts, in bytes from the file's start: what MoveTo takes to come back to it.
    std::uint64_t Offset() const noexcept { return start_ + at_; }
    /// Beyond the end of the file there is nothing to read.
    void MoveTo(std::uint64_t offset);
    /// Passes the next line without keeping it. Call only when not AtEnd.
    void SkipLine();

private:
    /// False at the end of the file.
    bool Fill();

    std::string path_;
    OpenFile file_;
    std::uint64_t size_ = 0;
    bool utf8_ = false;
    std::string buffer_;
    std::uint64_t start_ = 0;  // where the buffer's first byte stands in the file
    std::size_t at_ = 0;       // start of what is not handed out yet
    std::string line_;
    bool carriageReturn_ = false;
};

}  // namespace vlm::files
