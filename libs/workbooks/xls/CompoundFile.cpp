#include "CompoundFile.h"

#include <algorithm>

#include "LittleEndian.h"
#include "files/Machine.h"
#include "files/Paths.h"
#include "values/Utf8.h"
#include "workbooks/WorkbookFault.h"

namespace vlm::files {

namespace {

constexpr std::uint64_t kMaxFile = 512U << 20;
constexpr std::size_t kMiniSector = 64;
constexpr std::size_t kEntrySize = 128;
constexpr std::uint32_t kLastSector = 0xFFFFFFFA;  // what is above marks free places, ends of chains, the table itself
constexpr std::uint32_t kEndOfChain = 0xFFFFFFFE;
constexpr std::size_t kHeaderTableAt = 76;
constexpr std::size_t kHeaderSize = 512;
constexpr std::uint8_t kStreamEntry = 2;

[[noreturn]] void RefuseDamaged() { throw WorkbookFault("il file è incompleto o danneggiato"); }

std::string ReadFile(const std::string& path) {
    const auto facts = FactsOf(path);
    if (facts && facts->size > kMaxFile) throw WorkbookFault("il file è troppo grande");
    const OpenFile file = machine::OpenToRead(ToNative(path));
    if (!file || !facts) throw WorkbookFault("il file non si può aprire");
    std::string content(static_cast<std::size_t>(facts->size), '\0');
    content.resize(std::fread(content.data(), 1, content.size(), file.get()));
    return content;
}

/// A name of the directory; characters outside ASCII, which no name of ours has, become "?".
std::string EntryName(std::string_view entry) {
    const std::size_t bytes = std::min<std::size_t>(Read16(entry, 64), 64);
    std::string name;
    for (std::size_t at = 0; at + 2 < bytes; at += 2) {
        const std::uint16_t unit = Read16(entry, at);
        name += unit < 0x80 ? static_cast<char>(unit) : '?';
    }
    return name;
}

}  // namespace

CompoundFile::CompoundFile(const std::string& path) : content_(ReadFile(path)) {
    ReadHeader();
    ReadTable();
    ReadDirectory();
    ReadMiniStream();
}

void CompoundFile::ReadHeader() {
    if (content_.size() < kHeaderSize || !content_.starts_with("\xD0\xCF\x11\xE0\xA1\xB1\x1A\xE1")) RefuseDamaged();
    const std::uint16_t shift = Read16(content_, 30);
    if (shift != 9 && shift != 12) RefuseDamaged();
    sectorSize_ = std::size_t{1} << shift;
    if (content_.size() <= sectorSize_) RefuseDamaged();
    sectors_ = (content_.size() - 1) / sectorSize_;
    miniLimit_ = Read32(content_, 56);
}

std::string_view CompoundFile::Sector(std::uint32_t number) const {
    if (number >= sectors_) RefuseDamaged();
    return std::string_view(content_).substr((std::size_t{number} + 1) * sectorSize_, sectorSize_);
}

std::string_view CompoundFile::MiniSector(std::uint32_t number) const {
    const std::size_t at = std::size_t{number} * kMiniSector;
    if (at >= miniStream_.size()) RefuseDamaged();
    return std::string_view(miniStream_).substr(at, kMiniSector);
}

/// Of the table only as much is kept as the file has sectors: a table that names one of its sectors many times gains
/// nothing.
void CompoundFile::AddTableSector(std::uint32_t sector) {
    if (sector > kLastSector || table_.size() >= sectors_) return;
    const std::string_view part = Sector(sector);
    for (std::size_t at = 0; at + 4 <= part.size(); at += 4) table_.push_back(Read32(part, at));
}

void CompoundFile::ReadTable() {
    for (std::size_t at = kHeaderTableAt; at < kHeaderSize; at += 4) AddTableSector(Read32(content_, at));
    std::uint32_t next = Read32(content_, 68);
    for (std::size_t read = 0; next <= kLastSector; ++read) {
        if (read > sectors_) RefuseDamaged();
        const std::string_view list = Sector(next);
        for (std::size_t at = 0; at + 4 < sectorSize_; at += 4) AddTableSector(Read32(list, at));
        next = Read32(list, sectorSize_ - 4);
    }
    if (table_.empty()) RefuseDamaged();
}

std::vector<std::uint32_t> CompoundFile::Chain(const Table& table, std::uint32_t start) const {
    std::vector<std::uint32_t> chain;
    for (std::uint32_t sector = start; sector != kEndOfChain; sector = table[sector]) {
        if (sector >= table.size() || chain.size() >= table.size()) RefuseDamaged();
        chain.push_back(sector);
    }
    return chain;
}

void CompoundFile::ReadDirectory() {
    for (const std::uint32_t sector : Chain(table_, Read32(content_, 48))) {
        const std::string_view part = Sector(sector);
        for (std::size_t at = 0; at + kEntrySize <= part.size(); at += kEntrySize) {
            const std::string_view raw = part.substr(at, kEntrySize);
            Entry entry;
            entry.name = EntryName(raw);
            entry.isStream = Read8(raw, 66) == kStreamEntry;
            entry.left = Read32(raw, 68);
            entry.right = Read32(raw, 72);
            entry.child = Read32(raw, 76);
            entry.start = Read32(raw, 116);
            entry.size = Read32(raw, 120);
            entries_.push_back(std::move(entry));
        }
    }
    if (entries_.empty()) RefuseDamaged();
}

void CompoundFile::ReadMiniStream() {
    const std::uint32_t start = Read32(content_, 60);
    if (start > kLastSector) return;
    for (const std::uint32_t sector : Chain(table_, start)) {
        const std::string_view part = Sector(sector);
        for (std::size_t at = 0; at + 4 <= part.size(); at += 4) miniTable_.push_back(Read32(part, at));
    }
    const Entry& root = entries_.front();
    if (root.start > kLastSector) return;
    for (const std::uint32_t sector : Chain(table_, root.start)) miniStream_ += Sector(sector);
}

std::string CompoundFile::ReadStream(std::uint32_t start, std::uint32_t size) const {
    const bool mini = size < miniLimit_;
    std::string content;
    for (const std::uint32_t sector : Chain(mini ? miniTable_ : table_, start)) {
        if (content.size() >= size) break;
        content += mini ? MiniSector(sector) : Sector(sector);
    }
    if (content.size() < size) RefuseDamaged();
    content.resize(size);
    return content;
}

std::optional<std::string> CompoundFile::Stream(std::string_view name) const {
    std::vector<bool> seen(entries_.size());
    std::vector<std::uint32_t> waiting = {entries_.front().child};
    while (!waiting.empty()) {
        const std::uint32_t number = waiting.back();
        waiting.pop_back();
        if (number >= entries_.size() || seen[number]) continue;
        seen[number] = true;
        const Entry& entry = entries_[number];
        if (entry.isStream && text::EqualNoCase(entry.name, name)) return ReadStream(entry.start, entry.size);
        waiting.push_back(entry.left);
        waiting.push_back(entry.right);
    }
    return std::nullopt;
}

}  // namespace vlm::files
