#pragma once

#include <filesystem>

namespace vlm::files {

/// Tells other programs that a file is in use. The lock goes with the object.
class FileLock {
public:
    FileLock() = default;
    FileLock(const FileLock&) = delete;
    FileLock& operator=(const FileLock&) = delete;
    ~FileLock() { Release(); }

    /// `path` in the machine's form. False when there is no such file or another program holds it.
    bool Take(const std::filesystem::path& path) noexcept;
    void Release() noexcept;

private:
    int descriptor_ = -1;
};

/// Brings a folder's names to the disk, where the file system can.
void SyncFolder(const std::filesystem::path& folder) noexcept;

}  // namespace vlm::files
