#include "ElementBuilder.h"
#include "values/Number.h"
#include "values/Utf8.h"

namespace vlm {

namespace {

constexpr std::uint32_t kRowStep = 10;
constexpr std::string_view kNoBreakSpace = "\xC2\xA0";

std::string WithoutNoBreakSpaces(std::string value) {
    for (std::size_t at = value.find(kNoBreakSpace); at != std::string::npos; at = value.find(kNoBreakSpace, at)) {
        value.erase(at, kNoBreakSpace.size());
    }
    return value;
}

/// The rows of one worksheet, cut into cells as the format says.
class SheetRows {
public:
    SheetRows(const SourceFormat& format, const files::Worksheet& sheet) : format_(format), sheet_(sheet) {}

    std::string TextAt(std::uint32_t row, int column) const {
        const std::string value = files::TextOf(sheet_.Cell(row, static_cast<std::uint32_t>(column)));
        return WithoutNoBreakSpaces(std::string(text::Trim(value)));
    }
    bool HasNumber(std::uint32_t row) const {
        return text::ParseNumber(TextAt(row, format_.presenceColumn)).value_or(0) != 0;
    }

    const RawElement& Cut(std::uint32_t row) {
        for (const SourceColumn& column : format_.columns) {
            std::string& cell = cells_[static_cast<std::size_t>(OrdinalOf(column.column))];
            if (column.place == 0) {
                cell.clear();
            } else if (column.rule == CellRule::AsItIs) {
                cell = files::TextOf(sheet_.Cell(row, static_cast<std::uint32_t>(column.place)));
            } else {
                cell = TextAt(row, column.place);
            }
            raw_[column.column] = cell;
        }
        if (format_.adapt != nullptr) format_.adapt({}, raw_, scratch_);
        return raw_;
    }

private:
    const SourceFormat& format_;
    const files::Worksheet& sheet_;
    std::array<std::string, kElementColumns.size()> cells_;
    RawElement raw_;
    std::string scratch_;
};

/// Calls `take` with each row of a sheet that is an element, and `passed` after each row.
template <typename Take, typename Passed>
void ForEachRow(const SourceFormat& format, const files::Worksheet& sheet, Take&& take, Passed&& passed) {
    const std::uint32_t last = sheet.LastRow();
    SheetRows rows(format, sheet);
    for (std::uint32_t row = format.firstRow; row <= last; ++row) {
        const bool numbered = (format.endsWithoutNumber || format.onlyNumbered) && rows.HasNumber(row);
        if (format.endsWithoutNumber && !numbered) return;
        const bool present =
            format.onlyNumbered ? numbered : !text::Trim(rows.TextAt(row, format.presenceColumn)).empty();
        if (present) take(rows.Cut(row), row);
        passed(row, last);
    }
}

/// Calls `read` with each sheet that the format speaks of.
template <typename Read>
void ForEachSheet(const SourceFormat& format, files::Workbook& workbook, Read&& read) {
    const int first = format.sheet == 0 ? 1 : format.sheet;
    const int last = format.sheet == 0 ? workbook.WorksheetCount() : format.sheet;
    for (int number = first; number <= last; ++number) read(workbook.Sheet(number));
}

/// A workbook that is small against the archive asks for its own patients only.
void AskForPatients(const SourceFormat& format, files::Workbook& workbook, ArchiveMatcher& archive) {
    std::uint64_t count = 0;
    ForEachSheet(format, workbook, [&](const files::Worksheet& sheet) { count += sheet.LastRow(); });
    if (count == 0 || !archive.IsWorthAsking(count)) return;
    SourceKeys keys(format);
    ForEachSheet(format, workbook, [&](const files::Worksheet& sheet) {
        ForEachRow(
            format, sheet, [&](const RawElement& raw, std::uint32_t) { keys.Add(raw); },
            [](std::uint32_t, std::uint32_t) {});
    });
    keys.Ask(archive);
}

}  // namespace

ElementListPtr ReadWorkbook(const SourceFormat& format, const std::string& path, ReadContext& context,
                            const files::WorkbookOpener& opener) {
    const std::unique_ptr<files::Workbook> workbook = opener.Open(path);
    ElementListPtr elements = NewElementList();
    ElementBuilder builder(format, context, *elements);
    AskForPatients(format, *workbook, context.archive);
    ForEachSheet(format, *workbook, [&](const files::Worksheet& sheet) {
        context.progress.Restart();
        ForEachRow(
            format, sheet, [&](const RawElement& raw, std::uint32_t row) { builder.Add(raw, row); },
            [&](std::uint32_t row, std::uint32_t last) {
                if (row % kRowStep == 0) context.progress.Raise(row, last);
            });
    });
    elements->MoveFirst();
    return elements;
}

}  // namespace vlm
