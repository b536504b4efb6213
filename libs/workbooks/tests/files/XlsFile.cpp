#include "XlsFile.h"

#include <bit>
#include <cmath>
#include <fstream>

#include "values/CodePage1252.h"
#include "values/Utf8.h"

namespace vlm::test {

namespace {

constexpr std::size_t kMiniLimit = 4096;

/// The characters in two bytes each, or in one when all fit, and which of the two it is.
struct Units {
    bool wide = false;
    std::vector<std::uint16_t> units;

    explicit Units(std::string_view utf8) {
        while (!utf8.empty()) {
            const char32_t c = text::Decode(utf8);
            if (c >= 0x10000) {
                units.push_back(static_cast<std::uint16_t>(0xD800 + ((c - 0x10000) >> 10)));
                units.push_back(static_cast<std::uint16_t>(0xDC00 + ((c - 0x10000) & 0x3FF)));
            } else {
                units.push_back(static_cast<std::uint16_t>(c));
            }
            if (c > 0xFF) wide = true;
        }
    }
    std::string Flags() const { return std::string(1, wide ? '\1' : '\0'); }
    std::string At(std::size_t i) const { return wide ? Le16(units[i]) : std::string(1, static_cast<char>(units[i])); }
    std::string All() const {
        std::string bytes = Flags();
        for (std::size_t i = 0; i < units.size(); ++i) bytes += At(i);
        return bytes;
    }
    std::uint32_t Length() const { return static_cast<std::uint32_t>(units.size()); }
};

}  // namespace

std::string Le16(std::uint32_t value) {
    return {static_cast<char>(value & 0xFF), static_cast<char>((value >> 8) & 0xFF)};
}
std::string Le32(std::uint32_t value) { return Le16(value & 0xFFFF) + Le16(value >> 16); }
std::string LeDouble(double value) {
    const auto bits = std::bit_cast<std::uint64_t>(value);
    return Le32(static_cast<std::uint32_t>(bits)) + Le32(static_cast<std::uint32_t>(bits >> 32));
}

std::string BiffRecordOf(std::uint16_t type, const std::string& data) {
    return Le16(type) + Le16(static_cast<std::uint32_t>(data.size())) + data;
}

XlsFile& XlsFile::Sheet(const std::string& name, const SheetRows& rows) {
    std::string records;
    for (std::uint32_t row = 0; row < rows.size(); ++row) {
        for (std::uint32_t column = 0; column < rows[row].size(); ++column) {
            records += CellRecord(rows[row][column], row, column);
        }
    }
    return SheetRecords(name, records);
}

std::string XlsFile::CellRecord(const files::SheetValue& value, std::uint32_t row, std::uint32_t column) {
    const std::string place = Le16(row) + Le16(column);
    if (const auto* text = std::get_if<std::string>(&value)) {
        if (options_.version5) {
            const std::string ansi = text::ToAnsi(*text);
            return BiffRecordOf(0x204, place + Le16(0) + Le16(static_cast<std::uint32_t>(ansi.size())) + ansi);
        }
        texts_.push_back(*text);
        return BiffRecordOf(0xFD, place + Le16(0) + Le32(static_cast<std::uint32_t>(texts_.size() - 1)));
    }
    if (const auto* truth = std::get_if<bool>(&value)) {
        return BiffRecordOf(0x205, place + Le16(0) + (*truth ? '\1' : '\0') + '\0');
    }
    if (const auto* date = std::get_if<Date>(&value)) {
        return BiffRecordOf(0x203, place + Le16(1) + LeDouble(date->Serial() - (options_.from1904 ? 1462 : 0)));
    }
    if (const auto* number = std::get_if<double>(&value)) {
        const bool small = std::trunc(*number) == *number && std::abs(*number) < 1e8;
        if (!small) return BiffRecordOf(0x203, place + Le16(0) + LeDouble(*number));
        return BiffRecordOf(
            0x27E, place + Le16(0) + Le32((static_cast<std::uint32_t>(static_cast<std::int32_t>(*number)) << 2) | 2));
    }
    return {};
}

XlsFile& XlsFile::SheetRecords(const std::string& name, const std::string& records, std::uint8_t kind) {
    sheets_.push_back({name, records, kind});
    return *this;
}

XlsFile& XlsFile::Global(const std::string& records) {
    globals_ += records;
    return *this;
}

std::string XlsFile::TextList() const {
    if (options_.version5) return {};
    const auto count = static_cast<std::uint32_t>(texts_.size());
    std::string records;
    std::string data = Le32(count) + Le32(count);
    std::uint16_t type = 0xFC;
    const auto close = [&] {
        records += BiffRecordOf(type, data);
        type = 0x3C;
        data.clear();
    };
    for (const std::string& text : texts_) {
        const Units units(text);
        if (data.size() + 4 > options_.textRecordSize) close();
        data += Le16(units.Length()) + units.Flags();
        for (std::size_t i = 0; i < units.units.size(); ++i) {
            if (data.size() + 2 > options_.textRecordSize) {
                close();
                data = units.Flags();
            }
            data += units.At(i);
        }
    }
    close();
    return records;
}

std::string XlsFile::Opening(std::uint16_t kind) const {
    const std::string opening = Le16(options_.version5 ? 0x0500 : 0x0600) + Le16(kind) + Le16(0x0DBB) + Le16(0x07CC);
    return BiffRecordOf(0x809, options_.version5 ? opening : opening + Le32(0) + Le32(6));
}

std::string XlsFile::SheetList(const std::vector<std::size_t>& offsets) const {
    std::string records;
    for (std::size_t i = 0; i < sheets_.size(); ++i) {
        const Units name(sheets_[i].name);
        const std::string length(1, static_cast<char>(options_.version5 ? sheets_[i].name.size() : name.Length()));
        records += BiffRecordOf(0x85, Le32(static_cast<std::uint32_t>(offsets[i])) + '\0' +
                                          static_cast<char>(sheets_[i].kind) + length +
                                          (options_.version5 ? sheets_[i].name : name.All()));
    }
    return records;
}

std::string XlsFile::Stream() const {
    std::string head = Opening(5) + BiffRecordOf(0x42, Le16(options_.version5 ? 1252 : 1200)) +
                       BiffRecordOf(0x22, Le16(options_.from1904 ? 1 : 0)) + globals_;
    std::string styles = BiffRecordOf(0xE0, Le16(0) + Le16(0) + std::string(16, '\0')) +
                         BiffRecordOf(0xE0, Le16(0) + Le16(14) + std::string(16, '\0'));
    for (std::uint32_t i = 0; i < options_.formats.size(); ++i) {
        const Units code(options_.formats[i]);
        const std::string content = options_.version5
                                        ? static_cast<char>(options_.formats[i].size()) + options_.formats[i]
                                        : Le16(code.Length()) + code.All();
        head += BiffRecordOf(0x41E, Le16(164 + i) + content);
        styles += BiffRecordOf(0xE0, Le16(0) + Le16(164 + i) + std::string(16, '\0'));
    }
    head += styles;
    const std::string tail = TextList() + BiffRecordOf(0x0A, "");

    std::string sheets;
    std::vector<std::size_t> offsets(sheets_.size());
    const std::size_t start = head.size() + SheetList(offsets).size() + tail.size();
    for (std::size_t i = 0; i < sheets_.size(); ++i) {
        offsets[i] = start + sheets.size();
        sheets += Opening(0x10) + sheets_[i].records + BiffRecordOf(0x0A, "");
    }
    std::string stream = head + SheetList(offsets) + tail + sheets;
    if (!options_.mini && stream.size() < kMiniLimit) stream.resize(kMiniLimit, '\0');
    return stream;
}

std::string XlsFile::Bytes() const { return CompoundFileOf(options_.version5 ? "Book" : "Workbook", Stream()); }

void XlsFile::Write(const std::string& path) const { std::ofstream(path, std::ios::binary) << Bytes(); }

}  // namespace vlm::test
