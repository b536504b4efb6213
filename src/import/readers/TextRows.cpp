#include "TextRows.h"

#include <algorithm>

#include "values/Number.h"
#include "values/Utf8.h"

namespace vlm {

TextRows::TextRows(const SourceFormat& format, const std::string& path) : format_(format), reader_(path) {
    if (format.delimiter.empty()) return;
    int wanted = std::max(format.minimumFields, 1);
    for (const SourceColumn& column : format.columns) wanted = std::max(wanted, column.place);
    wantedFields_ = static_cast<std::size_t>(wanted);
}

bool TextRows::NextLine() {
    if (reader_.AtEnd()) return false;
    line_ = reader_.ReadLine();
    ++number_;
    return true;
}

bool TextRows::EndsSourceLine() { return reader_.EndedWithCarriageReturn() || reader_.AtEnd(); }

bool TextRows::IsRow() {
    if (number_ <= format_.headingLines) return false;
    if ((format_.skipsBlankLines || format_.needsFiscalCode) && text::Trim(line_).empty()) return false;
    if (format_.delimiter.empty()) {
        CutFixed();
    } else if (!CutFields()) {
        return false;
    }
    if (format_.adapt != nullptr) format_.adapt(line_, raw_, scratch_);
    return true;
}

void TextRows::CutFixed() {
    const bool ascii = text::IsAscii(line_);
    for (const SourceColumn& column : format_.columns) {
        const auto place = static_cast<std::size_t>(column.place);
        const auto length = static_cast<std::size_t>(column.length);
        if (place == 0 || place > line_.size()) {
            raw_[column.column] = {};
        } else {
            raw_[column.column] = text::Trim(ascii ? line_.substr(place - 1, length) : text::Mid(line_, place, length));
        }
    }
}

/// Fields beyond those that the format speaks of are not cut. Quotes are part of a field's text.
bool TextRows::CutFields() {
    fields_.clear();
    std::string_view rest = line_;
    for (std::size_t end = 0; fields_.size() < wantedFields_ && end != std::string_view::npos;) {
        end = rest.find(format_.delimiter);
        fields_.push_back(text::Trim(rest.substr(0, end)));
        if (end != std::string_view::npos) rest.remove_prefix(end + format_.delimiter.size());
    }
    if (fields_.size() < static_cast<std::size_t>(format_.minimumFields)) return false;
    if (format_.numberInFront && !text::ParseNumber(fields_.front())) return false;
    for (const SourceColumn& column : format_.columns) {
        const auto field = static_cast<std::size_t>(column.place);
        raw_[column.column] = field == 0 || field > fields_.size() ? std::string_view() : fields_[field - 1];
    }
    return true;
}

}  // namespace vlm
