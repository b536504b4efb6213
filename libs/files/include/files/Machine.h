#pragma once

#include <cstdint>
#include <cstdio>
#include <filesystem>
#include <system_error>

/// What this room needs of one machine's file system, beyond the standard library. What fails leaves its reason in
/// errno, EWOULDBLOCK for a file that another program has in use.
namespace vlm::files::machine {

/// For reading; others may read, replace and remove the file meanwhile.
std::FILE* OpenToRead(const std::filesystem::path& path) noexcept;
/// Creates the file or empties it, and holds it exclusively. A file in use loses nothing.
std::FILE* OpenToWrite(const std::filesystem::path& path) noexcept;
bool MoveTo(std::FILE* file, std::uint64_t offset) noexcept;
/// Brings what was written to the disk itself; true where the file system cannot.
bool Sync(std::FILE* file) noexcept;

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
