#include "files/FileLock.h"

#include <io.h>

#include "windows/Handle.h"

namespace vlm::files {

bool FileLock::Take(const std::filesystem::path& path) noexcept {
    Release();
    // Sharing everything lets the holder rename and remove the file; the lock is what keeps others away.
    descriptor_ = machine::OpenDescriptor(path, GENERIC_READ, machine::kShareAll, OPEN_EXISTING);
    if (descriptor_ < 0) return false;
    constexpr DWORD kEverything = ~DWORD{0};
    OVERLAPPED fromTheStart{};
    if (LockFileEx(machine::HandleOf(descriptor_), LOCKFILE_EXCLUSIVE_LOCK | LOCKFILE_FAIL_IMMEDIATELY, 0, kEverything,
                   kEverything, &fromTheStart) != 0) {
        return true;
    }
    Release();
    return false;
}

void FileLock::Release() noexcept {
    if (descriptor_ >= 0) ::_close(descriptor_);  // the lock goes with the handle
    descriptor_ = -1;
}

void SyncFolder(const std::filesystem::path&) noexcept {}  // a replacement is written through already

}  // namespace vlm::files
