#pragma once

#include <string>
#include <vector>

#include "files/LineReader.h"
#include "readers/SourceFormat.h"

namespace vlm {

/// The rows of a text source that may become elements, one after the other, cut into cells as its format says.
class TextRows {
public:
    /// Throws Error naming a file that cannot be read.
    TextRows(const SourceFormat& format, const std::string& path);

    /// Goes on to the next line; false at the end.
    bool NextLine();
    /// Whether the line is a row: no heading, not blank where that counts, with the fields that it needs. Its cells are
    /// then in Raw.
    bool IsRow();
    const RawElement& Raw() const noexcept { return raw_; }

    std::uint64_t LineNumber() const noexcept { return number_; }  // from 1
    std::string_view Line() const noexcept { return line_; }
    /// Whether the line is the end of what the file itself parts by carriage return and line feed.
    bool EndsSourceLine();
    files::LineReader& File() noexcept { return reader_; }

private:
    void CutFixed();
    bool CutFields();

    const SourceFormat& format_;
    files::LineReader reader_;
    std::string_view line_;
    std::uint64_t number_ = 0;
    RawElement raw_;
    std::string scratch_;
    std::size_t wantedFields_ = 0;
    std::vector<std::string_view> fields_;
};

}  // namespace vlm
