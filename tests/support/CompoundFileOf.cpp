#include <algorithm>

#include "support/XlsFile.h"

namespace vlm::test {

namespace {

constexpr std::size_t kSector = 512;
constexpr std::size_t kMiniSector = 64;
constexpr std::uint32_t kEnd = 0xFFFFFFFE;
constexpr std::uint32_t kFree = 0xFFFFFFFF;
constexpr std::uint32_t kTable = 0xFFFFFFFD;
constexpr std::uint32_t kMiniLimit = 4096;

std::size_t Sectors(std::size_t bytes, std::size_t size = kSector) { return (bytes + size - 1) / size; }

std::string Padded(std::string bytes, std::size_t size = kSector) {
    bytes.resize(Sectors(bytes.size(), size) * size, '\0');
    return bytes;
}

struct Entry {
    std::string name;
    char kind = 0;  // 1 a folder, 2 a stream, 5 the root
    std::uint32_t left = kFree, right = kFree, child = kFree;
    std::uint32_t start = kEnd;
    std::size_t size = 0;

    std::string Bytes() const {
        std::string bytes;
        for (const char c : name) bytes += std::string{c, '\0'};
        bytes.resize(64, '\0');
        bytes += Le16(static_cast<std::uint32_t>(name.empty() ? 0 : name.size() * 2 + 2)) + kind + '\1';
        bytes += Le32(left) + Le32(right) + Le32(child) + std::string(36, '\0') + Le32(start);
        return bytes + Le32(static_cast<std::uint32_t>(size)) + std::string(4, '\0');
    }
};

/// The chain of `count` sectors from `first`, put into a table.
void AddChain(std::vector<std::uint32_t>& table, std::size_t count) {
    for (std::size_t i = 0; i < count; ++i) {
        const auto next = static_cast<std::uint32_t>(table.size() + 1);
        table.push_back(i + 1 < count ? next : kEnd);
    }
}

std::string TableBytes(const std::vector<std::uint32_t>& table) {
    std::string bytes;
    for (const std::uint32_t next : table) bytes += Le32(next);
    while (bytes.size() % kSector != 0) bytes += Le32(kFree);
    return bytes;
}

std::string Header(std::size_t tableSectors, std::uint32_t directory, std::uint32_t miniTable) {
    std::string header = "\xD0\xCF\x11\xE0\xA1\xB1\x1A\xE1" + std::string(16, '\0');
    header += Le16(0x3E) + Le16(3) + Le16(0xFFFE) + Le16(9) + Le16(6) + std::string(10, '\0');
    header += Le32(static_cast<std::uint32_t>(tableSectors)) + Le32(directory) + Le32(0) + Le32(kMiniLimit);
    header += Le32(miniTable) + Le32(miniTable == kEnd ? 0 : 1) + Le32(kEnd) + Le32(0);
    for (std::uint32_t i = 0; i < 109; ++i) header += Le32(i < tableSectors ? i : kFree);
    return header;
}

}  // namespace

std::string CompoundFileOf(const std::string& name, const std::string& stream) {
    const bool mini = stream.size() < kMiniLimit;
    const std::size_t streamSectors = Sectors(Padded(stream, kMiniSector).size());
    const std::size_t others = streamSectors + 1 + (mini ? 1 : 0);
    std::size_t tableSectors = 1;
    while (tableSectors * (kSector / 4) < tableSectors + others) ++tableSectors;

    std::vector<std::uint32_t> table(tableSectors, kTable);
    const auto directoryAt = static_cast<std::uint32_t>(table.size());
    AddChain(table, 1);
    const auto streamAt = static_cast<std::uint32_t>(table.size());
    AddChain(table, streamSectors);
    const std::uint32_t miniTableAt = mini ? static_cast<std::uint32_t>(table.size()) : kEnd;
    if (mini) AddChain(table, 1);

    Entry root{"Root Entry", 5, kFree, kFree, 3, kEnd, 0};
    Entry workbook{name, 2, 1, kFree, kFree, streamAt, stream.size()};
    std::string miniTable;
    if (mini) {
        root.start = streamAt;
        root.size = Padded(stream, kMiniSector).size();
        workbook.start = 0;
        std::vector<std::uint32_t> chain;
        AddChain(chain, Sectors(stream.size(), kMiniSector));
        miniTable = TableBytes(chain);
    }
    const Entry folder{"MBD0001", 1, kFree, kFree, 2, kEnd, 0};
    const Entry foreign{"Workbook", 2, kFree, kFree, kFree, kEnd, 0};
    return Header(tableSectors, directoryAt, miniTableAt) + TableBytes(table) + root.Bytes() + folder.Bytes() +
           foreign.Bytes() + workbook.Bytes() + Padded(stream) + miniTable;
}

}  // namespace vlm::test
