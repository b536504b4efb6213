#include "import/readers/ElementBuilder.h"
#include "import/readers/SourceReaders.h"
#include "platform/text/Number.h"
#include "platform/text/Utf8.h"

namespace vlm {

namespace {

constexpr std::uint32_t kProgressStep = 10;
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
        std::string value = files::TextOf(sheet_.Cell(row, static_cast<std::uint32_t>(column)));
        return std::string(text::Trim(WithoutNoBreakSpaces(std::string(text::Trim(value)))));
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

void ReadSheet(const SourceFormat& format, const files::Worksheet& sheet, ElementBuilder& builder,
               ReadProgress& progress) {
    const std::uint32_t last = sheet.LastRow();
    SheetRows rows(format, sheet);
    progress.Restart();
    for (std::uint32_t row = format.firstRow; row <= last; ++row) {
        const bool numbered = (format.endsWithoutNumber || format.onlyNumbered) && rows.HasNumber(row);
        if (format.endsWithoutNumber && !numbered) return;
        const bool present = format.onlyNumbered ? numbered : !rows.TextAt(row, format.presenceColumn).empty();
        if (present) builder.Add(rows.Cut(row), row);
        if (row % kProgressStep == 0) progress.Raise(row, last);
    }
}

}  // namespace

ElementListPtr ReadWorkbook(const SourceFormat& format, const std::string& path, ReadContext& context,
                            const files::WorkbookOpener& opener) {
    const std::unique_ptr<files::Workbook> workbook = opener.Open(path);
    ElementListPtr elements = NewElementList();
    ElementBuilder builder(format, context, *elements);
    const int first = format.sheet == 0 ? 1 : format.sheet;
    const int last = format.sheet == 0 ? workbook->WorksheetCount() : format.sheet;
    for (int number = first; number <= last; ++number) {
        ReadSheet(format, workbook->Sheet(number), builder, context.progress);
    }
    elements->MoveFirst();
    return elements;
}

}  // namespace vlm
