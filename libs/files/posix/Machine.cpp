#include "files/Machine.h"

#include <algorithm>
#include <cerrno>
#include <fcntl.h>
#include <sys/file.h>
#include <unistd.h>

#include "files/Paths.h"

namespace vlm::files {

std::filesystem::path ToNative(std::string_view path) {
    std::string native(path);
    std::replace(native.begin(), native.end(), '\\', '/');
    return native;
}

std::string ToLibrary(std::string_view path) {
    std::string result(path);
    std::replace(result.begin(), result.end(), '/', '\\');
    return result;
}

bool FileLock::Take(const std::filesystem::path& path) noexcept {
    Release();
    descriptor_ = ::open(path.c_str(), O_RDONLY | O_CLOEXEC);
    if (descriptor_ < 0) return false;
    if (::flock(descriptor_, LOCK_EX | LOCK_NB) == 0) return true;
    Release();
    return false;
}

void FileLock::Release() noexcept {
    if (descriptor_ >= 0) ::close(descriptor_);
    descriptor_ = -1;
}

}  // namespace vlm::files

namespace vlm::files::machine {

namespace fs = std::filesystem;

OpenFile OpenToRead(const fs::path& path) noexcept { return OpenFile(std::fopen(path.c_str(), "rbe")); }

OpenFile OpenToWrite(const fs::path& path) noexcept {
    const int descriptor = ::open(path.c_str(), O_WRONLY | O_CREAT | O_CLOEXEC, 0666);
    if (descriptor < 0) return nullptr;
    // The lock comes before the emptying, so that a file in use loses nothing.
    const bool held = ::flock(descriptor, LOCK_EX | LOCK_NB) == 0 || errno != EWOULDBLOCK;
    OpenFile file(held && ::ftruncate(descriptor, 0) == 0 ? ::fdopen(descriptor, "wb") : nullptr);
    if (file == nullptr) {
        const int error = errno;
        ::close(descriptor);
        errno = error;
    }
    return file;
}

bool MoveTo(std::FILE* file, std::uint64_t offset) noexcept {
    return ::fseeko(file, static_cast<off_t>(offset), SEEK_SET) == 0;
}

bool Sync(std::FILE* file) noexcept { return ::fsync(::fileno(file)) == 0 || errno == EINVAL; }

void SyncFolder(const std::filesystem::path& folder) noexcept {
    const int descriptor = ::open(folder.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC);
    if (descriptor < 0) return;
    ::fsync(descriptor);
    ::close(descriptor);
}

Copied CopyAll(std::FILE* source, std::FILE* target) noexcept {
    constexpr std::size_t kStep = 64 * 1024 * 1024;
    // The kernel copies, and shares the blocks where the file system can.
    ssize_t copied = 0;
    while ((copied = ::copy_file_range(::fileno(source), nullptr, ::fileno(target), nullptr, kStep, 0)) > 0) {
    }
    if (copied == 0) return Copied::All;
    const bool cannot = errno == EXDEV || errno == EINVAL || errno == ENOSYS || errno == EOPNOTSUPP;
    return cannot ? Copied::Nothing : Copied::Failed;
}

void KeepAside(const fs::path& path, const fs::path& second, std::error_code& error) {
    fs::create_hard_link(path, second, error);
    if (error) fs::copy_file(path, second, error);
}

void Replace(const fs::path& from, const fs::path& to, std::error_code& error) noexcept { fs::rename(from, to, error); }

int ErrnoOf(int systemError) noexcept { return systemError; }

}  // namespace vlm::files::machine
