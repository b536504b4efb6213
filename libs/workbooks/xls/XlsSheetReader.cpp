#include "XlsSheetReader.h"

#include <cmath>

#include "LittleEndian.h"

namespace vlm::files {

namespace {

constexpr std::size_t kCellHeader = 6;  // row, column, style
constexpr std::size_t kRkSize = 6;      // style, number

CellPlace PlaceOf(std::string_view data) { return {Read16(data, 0) + 1U, Read16(data, 2) + 1U}; }

/// A number in four bytes: the upper half of a double or a whole number, perhaps in hundredths.
double RkNumber(std::uint32_t bits) {
    const bool hundredths = (bits & 1) != 0;
    const bool whole = (bits & 2) != 0;
    const double number = whole ? static_cast<double>(static_cast<std::int32_t>(bits) >> 2)
                                : std::bit_cast<double>(std::uint64_t{bits & ~3U} << 32);
    return hundredths ? number / 100 : number;
}

SheetValue ErrorOf(std::uint8_t code) {
    const auto named = [](std::string_view name) -> SheetValue { return std::string(ErrorText(name)); };
    switch (code) {
        case 0x00:
            return named("#NULL!");
        case 0x07:
            return named("#DIV/0!");
        case 0x0F:
            return named("#VALUE!");
        case 0x17:
            return named("#REF!");
        case 0x1D:
            return named("#NAME?");
        case 0x24:
            return named("#NUM!");
        case 0x2A:
            return named("#N/A");
        default:
            throw WorkbookFault("una cella contiene un errore non previsto");
    }
}

}  // namespace

void XlsSheetReader::Read(BiffRecords& records) {
    if (records.Next().type != BiffType::StartOfPart) throw WorkbookFault("un foglio non è dove dovrebbe essere");
    for (int depth = 1; depth > 0;) {
        const BiffRecord record = records.Next();
        if (record.type == BiffType::StartOfPart) ++depth;
        if (record.type == BiffType::EndOfPart) --depth;
        if (depth == 1) ReadCell(record, records);
    }
}

void XlsSheetReader::PutNumber(CellPlace place, double number, std::uint16_t style) {
    if (!std::isfinite(number)) throw WorkbookFault("la cella " + CellName(place) + " non contiene un numero valido");
    table_.Put(place, styles_.ValueOf(number, style));
}

void XlsSheetReader::ReadCell(const BiffRecord& record, BiffRecords& records) {
    const std::string_view data = record.data;
    switch (record.type) {
        case BiffType::Blank:
        case BiffType::MulBlank:
            return table_.Put(PlaceOf(data), {});
        case BiffType::Number:
            return PutNumber(PlaceOf(data), ReadDouble(data, kCellHeader), Read16(data, 4));
        case BiffType::Rk:
            return PutNumber(PlaceOf(data), RkNumber(Read32(data, kCellHeader)), Read16(data, 4));
        case BiffType::MulRk:
            return ReadMulRk(data, PlaceOf(data));
        case BiffType::BoolErr:
            if (Read8(data, kCellHeader + 1) != 0) return table_.Put(PlaceOf(data), ErrorOf(Read8(data, kCellHeader)));
            return table_.Put(PlaceOf(data), Read8(data, kCellHeader) != 0);
        case BiffType::LabelShared:
            return table_.PutShared(PlaceOf(data), Read32(data, kCellHeader));
        case BiffType::Formula:
            return ReadFormula(data, PlaceOf(data));
        case BiffType::Label:
        case BiffType::RString: {
            BiffText text(records.WithContinuations(record), unicode_);
            text.Skip(kCellHeader);
            return table_.Put(PlaceOf(data), text.ReadLong());
        }
        case BiffType::String:
            if (awaitsText_) table_.Put(*awaitsText_, BiffText(records.WithContinuations(record), unicode_).ReadLong());
            awaitsText_.reset();
            return;
        default:
            return;
    }
}

void XlsSheetReader::ReadMulRk(std::string_view data, CellPlace place) {
    for (std::size_t at = 4; at + kRkSize < data.size(); at += kRkSize) {
        PutNumber(place, RkNumber(Read32(data, at + 2)), Read16(data, at));
        ++place.column;
    }
}

void XlsSheetReader::ReadFormula(std::string_view data, CellPlace place) {
    constexpr std::uint16_t kNoNumber = 0xFFFF;
    enum : std::uint8_t { Text = 0, Truth = 1, Fault = 2 };
    awaitsText_.reset();
    if (Read16(data, kCellHeader + 6) != kNoNumber) {
        return PutNumber(place, ReadDouble(data, kCellHeader), Read16(data, 4));
    }
    const std::uint8_t value = Read8(data, kCellHeader + 2);
    switch (Read8(data, kCellHeader)) {
        case Text:
            awaitsText_ = place;
            return table_.Put(place, {});
        case Truth:
            return table_.Put(place, value != 0);
        case Fault:
            return table_.Put(place, ErrorOf(value));
        default:
            return table_.Put(place, {});
    }
}

}  // namespace vlm::files
