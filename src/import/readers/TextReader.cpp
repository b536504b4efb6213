#include <cmath>

#include "ElementBuilder.h"
#include "SourceKeys.h"
#include "TextRows.h"
#include "readers/SourceReaders.h"
#include "values/Utf8.h"

namespace vlm {

namespace {

constexpr std::uint64_t kProgressStep = 10;

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
