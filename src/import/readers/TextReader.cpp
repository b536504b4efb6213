#include <algorithm>
#include <cmath>

#include "ElementBuilder.h"
#include "files/LineReader.h"
#include "values/Number.h"
#include "values/Utf8.h"

namespace vlm {

namespace {

constexpr std::uint64_t kProgressStep = 10;

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

TextRows::TextRows(const SourceFormat& format, const std::string& path) : format_(format), reader_(path) {
    if (format.kind != SourceKind::Delimited) return;
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
    if (format_.kind == SourceKind::FixedWidth) {
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

/// When a text source tells how much of it is read.
class TextProgress {
public:
    TextProgress(const SourceFormat& format, TextRows& rows, std::uint64_t lineFeeds, ReadProgress& progress)
        : rule_(format.progress), rows_(rows), lastIndex_(lineFeeds), progress_(progress) {
        if (format.recordLength != 0) Estimate(format.recordLength);
    }

    /// The current line has been read.
    void LineRead() {
        switch (rule_) {
            case ProgressRule::Characters:
                characters_ += text::Length(rows_.Line());
                if (rows_.EndsSourceLine() && characters_ % kProgressStep == 0) {
                    progress_.Raise(characters_, rows_.File().FileSize());
                }
                break;
            case ProgressRule::LineIndex:
                if (rows_.LineNumber() > 1) RaiseAt(rows_.LineNumber() - 1, lastIndex_);
                break;
            case ProgressRule::EstimatedLines:
                if (estimate_ == 0 && !rows_.Line().empty()) Estimate(text::Length(rows_.Line()));
                RaiseAt(rows_.LineNumber(), estimate_);
        }
    }

private:
    void Estimate(std::uint64_t length) {
        const double lines = static_cast<double>(rows_.File().FileSize()) / static_cast<double>(length);
        estimate_ = static_cast<std::uint64_t>(std::nearbyint(lines));
    }
    void RaiseAt(std::uint64_t line, std::uint64_t whole) {
        if (line % kProgressStep == 0) progress_.Raise(line, whole);
    }

    ProgressRule rule_;
    TextRows& rows_;
    std::uint64_t lastIndex_;  // a line end at the end of the file leaves one more, empty line
    ReadProgress& progress_;
    std::uint64_t estimate_ = 0;
    std::uint64_t characters_ = 0;
};

/// A source that is small against the archive asks for its own patients only.
void AskForPatients(const SourceFormat& format, const std::string& path, ArchiveMatcher& archive) {
    SourceKeys keys(format);
    TextRows rows(format, path);
    while (rows.NextLine()) {
        if (rows.IsRow()) keys.Add(rows.Raw());
    }
    keys.Ask(archive);
}

}  // namespace

ElementListPtr ReadText(const SourceFormat& format, const std::string& path, ReadContext& context) {
    TextRows rows(format, path);
    const std::uint64_t lineFeeds = rows.File().CountLineFeeds();
    if (rows.File().FileSize() > 0 && context.archive.IsWorthAsking(lineFeeds + 1))
        AskForPatients(format, path, context.archive);
    ElementListPtr elements = NewElementList();
    ElementBuilder builder(format, context, *elements);
    TextProgress progress(format, rows, lineFeeds, context.progress);
    while (rows.NextLine()) {
        if (rows.IsRow()) builder.Add(rows.Raw(), rows.LineNumber());
        progress.LineRead();
    }
    elements->MoveFirst();
    return elements;
}

}  // namespace vlm
