#include "TextFileRows.h"

#include <algorithm>

#include "values/Number.h"
#include "values/Utf8.h"

namespace vlm::host {

namespace {

constexpr int kNumberColumn = 0;
constexpr int kNumberWidth = 60;    // pixels
constexpr int kCharacterWidth = 8;  // of an even font
constexpr std::size_t kLeastLength = 60;

}  // namespace

TextFileRows::TextFileRows(const std::string& path) : file_(path) {
    std::size_t longest = kLeastLength;
    while (!file_.AtEnd()) {
        starts_.push_back(file_.Offset());
        longest = std::max(longest, text::Length(file_.ReadLine()));
    }
    const int width = static_cast<int>(longest + 1) * kCharacterWidth;
    columns_ = {{"Riga", "Riga", kNumberWidth, true, false, true}, {"Testo", "Testo", width}};
    columns_.back().evenFont = true;
}

std::string TextFileRows::Cell(int row, int column) const {
    if (column == kNumberColumn) return text::FormatInteger(row + 1, true);
    file_.MoveTo(starts_[static_cast<std::size_t>(row)]);
    return file_.AtEnd() ? std::string() : std::string(file_.ReadLine());
}

}  // namespace vlm::host
