#include "workbooks/CellTable.h"

#include <algorithm>
#include <bit>
#include <tuple>

#include "workbooks/WorkbookFault.h"

namespace vlm::files {

namespace {

constexpr std::size_t kMaxCells = 16U << 20;
constexpr std::size_t kMaxTexts = 16U << 20;

}  // namespace

void SharedTexts::Add(std::string_view content) {
    if (places_.size() >= kMaxTexts) throw OverflowError("I testi sono troppi.");
    places_.push_back(texts_.Add(content));
}

bool CellTable::Before(const Entry& left, const Entry& right) noexcept {
    return std::tie(left.row, left.column) < std::tie(right.row, right.column);
}

void CellTable::Put(CellPlace place, const SheetValue& value) {
    if (const auto* text = std::get_if<std::string>(&value)) {
        Add(place, Kind::OwnText, own_.Add(*text));
    } else if (const auto* number = std::get_if<double>(&value)) {
        Add(place, Kind::Number, std::bit_cast<std::uint64_t>(*number));
    } else if (const auto* date = std::get_if<Date>(&value)) {
        Add(place, Kind::Date, std::bit_cast<std::uint64_t>(date->Serial()));
    } else if (const auto* truth = std::get_if<bool>(&value)) {
        Add(place, Kind::Boolean, *truth ? 1 : 0);
    } else {
        Add(place, Kind::Empty, 0);
    }
}

void CellTable::PutShared(CellPlace place, std::uint32_t text) {
    if (text >= shared_->Size()) {
        throw WorkbookFault("la cella " + CellName(place) + " rimanda a un testo che non c'è");
    }
    Add(place, Kind::SharedText, text);
}

void CellTable::Add(CellPlace place, Kind kind, std::uint64_t bits) {
    if (place.row < 1 || place.row > kMaxRow || place.column < 1 || place.column > kMaxColumn) {
        throw WorkbookFault("una cella sta fuori dal foglio");
    }
    lastRow_ = std::max(lastRow_, place.row);
    if (kind == Kind::Empty) return;
    if (entries_.size() >= kMaxCells) throw WorkbookFault("un foglio contiene troppe celle");
    const Entry entry{place.row, static_cast<std::uint16_t>(place.column), kind, bits};
    if (!entries_.empty() && !Before(entries_.back(), entry)) inOrder_ = false;
    entries_.push_back(entry);
}

void CellTable::Finish() {
    if (!inOrder_) std::stable_sort(entries_.begin(), entries_.end(), Before);
    entries_.shrink_to_fit();
}

SheetValue CellTable::Cell(std::uint32_t row, std::uint32_t column) const {
    if (column < 1 || column > kMaxColumn) return {};
    const Entry wanted{row, static_cast<std::uint16_t>(column), Kind::Empty, 0};
    const auto after = std::upper_bound(entries_.begin(), entries_.end(), wanted, Before);
    if (after == entries_.begin() || Before(*(after - 1), wanted)) return {};
    const Entry& found = *(after - 1);
    switch (found.kind) {
        case Kind::Boolean:
            return found.bits != 0;
        case Kind::Number:
            return std::bit_cast<double>(found.bits);
        case Kind::Date:
            return Date(std::bit_cast<double>(found.bits));
        case Kind::OwnText:
            return std::string(own_.At(static_cast<std::uint32_t>(found.bits)));
        case Kind::SharedText:
            return std::string(shared_->At(static_cast<std::uint32_t>(found.bits)));
        case Kind::Empty:
            break;
    }
    return {};
}

}  // namespace vlm::files
