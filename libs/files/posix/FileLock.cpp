#include "files/FileLock.h"

#include <fcntl.h>
#include <sys/file.h>
#include <unistd.h>

namespace vlm::files {

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

void SyncFolder(const std::filesystem::path& folder) noexcept {
    const int descriptor = ::open(folder.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC);
    if (descriptor < 0) return;
    ::fsync(descriptor);
    ::close(descriptor);
}

}  // namespace vlm::files
