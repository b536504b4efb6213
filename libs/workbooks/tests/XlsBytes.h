#pragma once

#include <algorithm>
#include <bit>
#include <cstdint>
#include <string>
#include <vector>

/// The bytes of xls workbooks that no program would write.
namespace vlm::test {

/// Numbers in the byte order of the file.
inline std::string Le16(std::uint32_t value) {
    return {static_cast<char>(value & 0xFF), static_cast<char>((value >> 8) & 0xFF)};
}
inline std::string Le32(std::uint32_t value) { return Le16(value & 0xFFFF) + Le16(value >> 16); }
inline std::string LeDouble(double value) {
    const auto bits = std::bit_cast<std::uint64_t>(value);
    return Le32(static_cast<std::uint32_t>(bits)) + Le32(static_cast<std::uint32_t>(bits >> 32));
}

inline std::string BiffRecordOf(std::uint16_t type, const std::string& data) {
    return Le16(type) + Le16(static_cast<std::uint32_t>(data.size())) + data;
}

constexpr std::uint32_t kLastOfChain = 0xFFFFFFFE;
constexpr std::uint32_t kFree = 0xFFFFFFFF;
constexpr std::size_t kSector = 512;
// Where the parts of a file of CompoundFileOf stand.
constexpr std::size_t kTableAt = kSector, kDirectoryAt = 2 * kSector, kWorkbookAt = kDirectoryAt + 3 * 128;

/// An entry of the directory; `kind` is 1 for a folder, 2 for a stream, 5 for the root.
inline std::string DirectoryEntry(const std::string& name, char kind, std::uint32_t left, std::uint32_t child,
                                  std::uint32_t start = kLastOfChain, std::size_t size = 0) {
    std::string bytes;
    for (const char c : name) bytes += std::string{c, '\0'};
    bytes.resize(64, '\0');
    bytes += Le16(static_cast<std::uint32_t>(name.size() * 2 + 2)) + kind + '\1' + Le32(left) + Le32(kFree);
    return bytes + Le32(child) + std::string(36, '\0') + Le32(start) + Le32(static_cast<std::uint32_t>(size)) + Le32(0);
}

/// A compound file of one stream (up to 60 KB) in its root folder, beside a folder with a "Workbook" of somebody
/// else's.
inline std::string CompoundFileOf(const std::string& name, std::string stream) {
    stream.resize(std::max<std::size_t>((stream.size() + kSector - 1) / kSector * kSector, 4096), '\0');
    std::string header = "\xD0\xCF\x11\xE0\xA1\xB1\x1A\xE1" + std::string(16, '\0');
    header += Le16(0x3E) + Le16(3) + Le16(0xFFFE) + Le16(9) + Le16(6) + std::string(10, '\0') + Le32(1) + Le32(1);
    header += Le32(0) + Le32(4096) + Le32(kLastOfChain) + Le32(0) + Le32(kLastOfChain) + Le32(0) + Le32(0);
    while (header.size() < kSector) header += Le32(kFree);
    std::string table = Le32(0xFFFFFFFD) + Le32(kLastOfChain);
    const auto end = static_cast<std::uint32_t>(2 + stream.size() / kSector);
    for (std::uint32_t sector = 3; sector <= end; ++sector) table += Le32(sector < end ? sector : kLastOfChain);
    while (table.size() < kSector) table += Le32(kFree);
    return header + table + DirectoryEntry("Root Entry", 5, kFree, 3) + DirectoryEntry("MBD0001", 1, kFree, 2) +
           DirectoryEntry("Workbook", 2, kFree, kFree) + DirectoryEntry(name, 2, 1, kFree, 2, stream.size()) + stream;
}

struct XlsSheet {
    std::string records = {};
    char kind = 0;  // 0 a sheet of cells, 2 a chart, 6 a module
};

/// A workbook of sheets given by their records, and further records of its own.
inline std::string XlsOf(const std::vector<XlsSheet>& sheets, const std::string& globals = {}, bool version5 = false) {
    const std::string closing = BiffRecordOf(0x0A, "");
    const auto opening = [&](std::uint32_t kind) {
        return BiffRecordOf(0x809, Le16(version5 ? 0x500 : 0x600) + Le16(kind) + std::string(12, '\0'));
    };
    std::string stream = opening(5) + globals, parts;
    constexpr std::size_t kListed = 12;  // bytes of a sheet's record in the list
    const std::size_t start = stream.size() + sheets.size() * kListed + closing.size();
    for (const XlsSheet& sheet : sheets) {
        const auto offset = static_cast<std::uint32_t>(start + parts.size());
        stream += BiffRecordOf(0x85, Le32(offset) + '\0' + sheet.kind + Le16(0));
        parts += opening(0x10) + sheet.records + closing;
    }
    return CompoundFileOf(version5 ? "Book" : "Workbook", stream + closing + parts);
}

/// The beginning of a cell's record.
inline std::string CellAt(std::uint32_t row, std::uint32_t column, std::uint32_t style = 0) {
    return Le16(row) + Le16(column) + Le16(style);
}

}  // namespace vlm::test
