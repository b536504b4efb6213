#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace vlm::files {

/// A file that holds streams as a disk holds files: sectors, a table of the sector that follows each, a directory.
/// Every chain is bounded by the sectors that the file really has.
class CompoundFile {
public:
    /// Reads the file, at most 512 MB. Throws WorkbookFault.
    explicit CompoundFile(const std::string& path);

    /// The content of a stream of the root folder; nothing when there is none of that name (in ASCII letters).
    std::optional<std::string> Stream(std::string_view name) const;

private:
    using Table = std::vector<std::uint32_t>;
    struct Entry {
        std::string name;
        bool isStream = false;
        std::uint32_t left = 0, right = 0, child = 0;
        std::uint32_t start = 0;
        std::uint32_t size = 0;  // bytes
    };

    void ReadHeader();
    void ReadTable();
    void AddTableSector(std::uint32_t sector);
    void ReadDirectory();
    void ReadMiniStream();
    std::string_view Sector(std::uint32_t number) const;
    std::string_view MiniSector(std::uint32_t number) const;
    std::vector<std::uint32_t> Chain(const Table& table, std::uint32_t start) const;
    std::string ReadStream(std::uint32_t start, std::uint32_t size) const;

    std::string content_;
    std::size_t sectorSize_ = 512;
    std::size_t sectors_ = 0;
    std::uint32_t miniLimit_ = 4096;  // smaller streams lie in the mini stream
    Table table_, miniTable_;
    std::string miniStream_;
    std::vector<Entry> entries_;
};

}  // namespace vlm::files
