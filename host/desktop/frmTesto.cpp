#include "frmTesto.h"

#include <algorithm>
#include <cstdint>
#include <vector>

#include "files/LineReader.h"
#include "files/Paths.h"
#include "frame/ModGeneral.h"
#include "values/Number.h"
#include "values/Utf8.h"

namespace vlm::host {

namespace {

constexpr int kNumberColumn = 0;
constexpr int kNumberWidth = 60;    // pixels
constexpr int kCharacterWidth = 8;  // of an even font
constexpr std::size_t kLeastLength = 60;

/// The lines of a text file as rows. Only where each line starts is kept; a line is read when it is shown.
class TextFileRows : public ui::GridModel {
public:
    /// Throws Error naming the path when the file cannot be opened.
    explicit TextFileRows(const std::string& path) : file_(path) {
        std::size_t longest = kLeastLength;
        while (!file_.AtEnd()) {
            starts_.push_back(file_.Offset());
            longest = std::max(longest, text::Length(file_.ReadLine()));
        }
        const int width = static_cast<int>(longest + 1) * kCharacterWidth;
        columns_ = {{"Riga", "Riga", kNumberWidth, true, false, true}, {"Testo", "Testo", width}};
        columns_.back().evenFont = true;
    }

    const std::vector<Column>& Columns() const override { return columns_; }
    int RowCount() const override { return static_cast<int>(starts_.size()); }
    std::string Cell(int row, int column) const override {
        if (column == kNumberColumn) return text::FormatInteger(row + 1, true);
        file_.MoveTo(starts_[static_cast<std::size_t>(row)]);
        return file_.AtEnd() ? std::string() : std::string(file_.ReadLine());
    }

private:
    mutable files::LineReader file_;
    std::vector<std::uint64_t> starts_;
    std::vector<Column> columns_;
};

}  // namespace

frmTesto::frmTesto(const std::string& path, std::function<void()> open)
    : Dialog("frmTesto", FileNameOf(files::ToLibrary(path))) {
    AddRow("", {{{&grdTesto}}});
    SetButtons({&cmdApri, &cmdChiudi}, nullptr, &cmdChiudi);
    grdTesto.SetModel(std::make_shared<TextFileRows>(path));
    cmdApri.OnChange = std::move(open);
    cmdChiudi.OnChange = [this] { Close(); };
}

}  // namespace vlm::host
