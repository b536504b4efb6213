#pragma once

#include <algorithm>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <map>
#include <random>
#include <string>
#include <vector>

namespace vlm::test {

class TempFolder {
public:
    TempFolder() {
        std::random_device random;
        do path_ = std::filesystem::temp_directory_path() / ("vlm-test-" + std::to_string(random()));
        while (!std::filesystem::create_directory(path_));
    }
    TempFolder(const TempFolder&) = delete;
    TempFolder& operator=(const TempFolder&) = delete;
    ~TempFolder() {
        std::error_code ignored;
        std::filesystem::remove_all(path_, ignored);
    }

    const std::filesystem::path& Path() const { return path_; }
    /// In UTF-8, as the name.
    std::string operator/(const std::string& name) const {
        const std::u8string inside = (path_ / std::u8string(name.begin(), name.end())).u8string();
        return {inside.begin(), inside.end()};
    }
    std::string Folder(const std::string& name) const {
        std::filesystem::create_directories(path_ / name);
        return *this / name;
    }

private:
    std::filesystem::path path_;
};

inline std::filesystem::path PathOf(const std::string& utf8) { return std::u8string(utf8.begin(), utf8.end()); }

inline void WriteBytes(const std::string& path, const std::string& bytes) {
    std::ofstream(PathOf(path), std::ios::binary) << bytes;
}

/// "<missing>" when there is no such file, so that a comparison tells which of the two it is.
inline std::string ReadBytes(const std::string& path) {
    if (std::filesystem::is_directory(PathOf(path))) return "<folder>";
    std::ifstream file(PathOf(path), std::ios::binary);
    if (!file) return "<missing>";
    return {std::istreambuf_iterator<char>(file), {}};
}

inline std::vector<std::string> NamesIn(const std::filesystem::path& folder) {
    std::vector<std::string> names;
    for (const auto& entry : std::filesystem::directory_iterator(folder)) {
        names.push_back(entry.path().filename().string());
    }
    std::sort(names.begin(), names.end());
    return names;
}

/// What stands in a folder: the bytes of every file by its name, hidden ones too.
inline std::map<std::string, std::string> FilesIn(const std::string& folder) {
    std::map<std::string, std::string> files;
    for (const std::string& name : NamesIn(folder)) files[name] = ReadBytes(folder + "/" + name);
    return files;
}

}  // namespace vlm::test
