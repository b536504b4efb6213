#include <algorithm>

#include "XlsFile.h"

namespace vlm::test {

namespace {

constexpr std::size_t kSector = 512;
constexpr std::size_t kMiniSector = 64;
constexpr std::uint32_t kEnd = 0xFFFFFFFE;
constexpr std::uint32_t kFree = 0xFFFFFFFF;
constexpr std::uint32_t kTable = 0xFFFFFFFD;
constexpr std::uint32_t kListOfTable = 0xFFFFFFFC;
constexpr std::size_t kInHeader = 109;  // sectors of the table that the header itself lists
constexpr std::size_t kInSector = kSector / 4;
constexpr std::uint32_t kMiniLimit = 4096;

std::size_t Sectors(std::size_t bytes, std::size_t size = kSector) { return (bytes + size - 1) / size; }

std::uint32_t Number(std::size_t value) { return static_cast<std::uint32_t>(value); }

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
        bytes += Le16(Number(name.empty() ? 0 : name.size() * 2 + 2)) + kind + '\1';
        bytes += Le32(left) + Le32(right) + Le32(child) + std::string(36, '\0') + Le32(start);
        return bytes + Le32(Number(size)) + std::string(4, '\0');
    }
};

/// The chain of `count` sectors from `first`, put into a table.
void AddChain(std::vector<std::uint32_t>& table, std::size_t count) {
    for (std::size_t i = 0; i < count; ++i) {
        const auto next = Number(table.size() + 1);
        table.push_back(i + 1 < count ? next : kEnd);
    }
}

std::string TableBytes(const std::vector<std::uint32_t>& table) {
    std::string bytes;
    for (const std::uint32_t next : table) bytes += Le32(next);
    while (bytes.size() % kSector != 0) bytes += Le32(kFree);
    return bytes;
}

/// The sectors of the table from `first` on, as many as a header or a sector lists.
std::string ListOfTable(std::size_t first, std::size_t room, std::size_t tableSectors) {
    std::string list;
    for (std::size_t i = first; i < first + room; ++i) list += Le32(i < tableSectors ? Number(i) : kFree);
    return list;
}

/// Where the parts of the file stand.
struct Plan {
    std::size_t tableSectors = 1, listSectors = 0;
    std::uint32_t directory = 0, stream = 0, miniTable = kEnd;

    /// The table and its list take sectors too, which it tells of.
    explicit Plan(std::size_t others) {
        while (tableSectors * kInSector < tableSectors + listSectors + others) {
            ++tableSectors;
            if (tableSectors > kInHeader) listSectors = Sectors(tableSectors - kInHeader, kInSector - 1);
        }
    }
    std::string Header() const {
        const std::uint32_t list = listSectors == 0 ? kEnd : Number(tableSectors);
        std::string header = "\xD0\xCF\x11\xE0\xA1\xB1\x1A\xE1" + std::string(16, '\0');
        header += Le16(0x3E) + Le16(3) + Le16(0xFFFE) + Le16(9) + Le16(6) + std::string(10, '\0');
        header += Le32(Number(tableSectors)) + Le32(directory) + Le32(0) + Le32(kMiniLimit) + Le32(miniTable);
        header += Le32(miniTable == kEnd ? 0 : 1) + Le32(list) + Le32(Number(listSectors));
        return header + ListOfTable(0, kInHeader, tableSectors);
    }
    std::string List() const {
        std::string list;
        for (std::size_t i = 0; i < listSectors; ++i) {
            list += ListOfTable(kInHeader + i * (kInSector - 1), kInSector - 1, tableSectors);
            list += Le32(i + 1 < listSectors ? Number(tableSectors + i + 1) : kEnd);
        }
        return list;
    }
};

}  // namespace

std::string CompoundFileOf(const std::string& name, const std::string& stream) {
    const bool mini = stream.size() < kMiniLimit;
    const std::size_t streamSectors = Sectors(Padded(stream, kMiniSector).size());
    Plan plan(streamSectors + 1 + (mini ? 1 : 0));
    std::vector<std::uint32_t> table(plan.tableSectors, kTable);
    table.insert(table.end(), plan.listSectors, kListOfTable);
    plan.directory = Number(table.size());
    AddChain(table, 1);
    plan.stream = Number(table.size());
    AddChain(table, streamSectors);
    if (mini) plan.miniTable = Number(table.size());
    if (mini) AddChain(table, 1);

    Entry root{"Root Entry", 5, kFree, kFree, 3, kEnd, 0};
    Entry workbook{name, 2, 1, kFree, kFree, plan.stream, stream.size()};
    std::string miniTable;
    if (mini) {
        root.start = plan.stream;
        root.size = Padded(stream, kMiniSector).size();
        workbook.start = 0;
        std::vector<std::uint32_t> chain;
        AddChain(chain, Sectors(stream.size(), kMiniSector));
        miniTable = TableBytes(chain);
    }
    const Entry folder{"MBD0001", 1, kFree, kFree, 2, kEnd, 0};
    const Entry foreign{"Workbook", 2, kFree, kFree, kFree, kEnd, 0};
    return plan.Header() + TableBytes(table) + plan.List() + root.Bytes() + folder.Bytes() + foreign.Bytes() +
           workbook.Bytes() + Padded(stream) + miniTable;
}

}  // namespace vlm::test
