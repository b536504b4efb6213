#pragma once

#include <cstdint>
#include <cstdio>
#include <filesystem>
#include <memory>
#include <system_error>

/// What this room needs of one machine's file system, beyond the standard library. What fails leaves its reason in
/// errno, EWOULDBLOCK for a file that another program has in use.
namespace vlm::files {

struct CloseFile {
    void operator()(std::FILE* file) const noexcept { std::fclose(file); }
};
/// An open file that closes itself, whatever the closing says. Null when it could not be opened.
using OpenFile = std::unique_ptr<std::FILE, CloseFile>;

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

}  // namespace vlm::files

namespace vlm::files::machine {

/// For reading; others may read, replace and remove the file meanwhile.
OpenFile OpenToRead(const std::filesystem::path& path) noexcept;
/// Creates the file or empties it, and holds it exclusively. A file in use loses nothing.
OpenFile OpenToWrite(const std::filesystem::path& path) noexcept;
bool MoveTo(std::FILE* file, std::uint64_t offset) noexcept;
/// Brings what was written to the disk itself; true where the file system cannot.
bool Sync(std::FILE* file) noexcept;
/// Brings a folder's names to the disk, where the file system can.
void SyncFolder(const std::filesystem::path& folder) noexcept;

enum class Copied { All, Nothing, Failed };
/// Appends all of `source`, of which nothing has been read, to `target` without its bytes passing through the program.
/// Nothing when the machine cannot do that for these files.
Copied CopyAll(std::FILE* source, std::FILE* target) noexcept;

/// Keeps what stands at `path` under a second name, which nothing has yet; `path` itself never vanishes.
void KeepAside(const std::filesystem::path& path, const std::filesystem::path& second, std::error_code& error);
/// Puts a file in the place of another, or where nothing stands. Whoever looks sees the one or the other.
void Replace(const std::filesystem::path& from, const std::filesystem::path& to, std::error_code& error) noexcept;

/// The errno value that says the same as an error of the machine's own.
int ErrnoOf(int systemError) noexcept;

}  // namespace vlm::files::machine
