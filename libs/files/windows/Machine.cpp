#include "files/Machine.h"

#include <cerrno>
#include <fcntl.h>
#include <io.h>
#include <windows.h>

#include "files/Paths.h"

namespace vlm::files {

namespace {

constexpr DWORD kShareAll = FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE;

/// errno from the error of the last system call.
void TakeLastError() noexcept { errno = machine::ErrnoOf(static_cast<int>(GetLastError())); }

/// An open file as the C library's descriptor, which closes the handle with it; -1 with errno when it cannot be opened.
/// `share` is what others may do meanwhile.
int OpenDescriptor(const std::filesystem::path& path, DWORD access, DWORD share, DWORD disposition) noexcept {
    const HANDLE handle =
        CreateFileW(path.c_str(), access, share, nullptr, disposition, FILE_ATTRIBUTE_NORMAL, nullptr);
    if (handle == INVALID_HANDLE_VALUE) {
        TakeLastError();
        return -1;
    }
    const int descriptor = ::_open_osfhandle(reinterpret_cast<std::intptr_t>(handle), _O_BINARY);
    if (descriptor < 0) CloseHandle(handle);
    return descriptor;
}

HANDLE HandleOf(int descriptor) noexcept { return reinterpret_cast<HANDLE>(::_get_osfhandle(descriptor)); }

}  // namespace

std::filesystem::path ToNative(std::string_view path) { return std::u8string(path.begin(), path.end()); }

std::string ToLibrary(std::string_view path) { return std::string(path); }

bool FileLock::Take(const std::filesystem::path& path) noexcept {
    Release();
    // Sharing everything lets the holder rename and remove the file; the lock is what keeps others away.
    descriptor_ = OpenDescriptor(path, GENERIC_READ, kShareAll, OPEN_EXISTING);
    if (descriptor_ < 0) return false;
    constexpr DWORD kEverything = ~DWORD{0};
    OVERLAPPED fromTheStart{};
    if (LockFileEx(HandleOf(descriptor_), LOCKFILE_EXCLUSIVE_LOCK | LOCKFILE_FAIL_IMMEDIATELY, 0, kEverything,
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

}  // namespace vlm::files

namespace vlm::files::machine {

namespace fs = std::filesystem;

namespace {

OpenFile StreamOf(int descriptor, const char* mode) noexcept {
    if (descriptor < 0) return nullptr;
    OpenFile file(::_fdopen(descriptor, mode));
    if (!file) ::_close(descriptor);
    return file;
}

std::error_code LastError() noexcept { return {static_cast<int>(GetLastError()), std::system_category()}; }

}  // namespace

OpenFile OpenToRead(const fs::path& path) noexcept {
    return StreamOf(OpenDescriptor(path, GENERIC_READ, kShareAll, OPEN_EXISTING), "rb");
}

OpenFile OpenToWrite(const fs::path& path) noexcept {
    constexpr DWORD kShareNothing = 0;
    return StreamOf(OpenDescriptor(path, GENERIC_WRITE, kShareNothing, CREATE_ALWAYS), "wb");
}

bool MoveTo(std::FILE* file, std::uint64_t offset) noexcept {
    return ::_fseeki64(file, static_cast<std::int64_t>(offset), SEEK_SET) == 0;
}

bool Sync(std::FILE* file) noexcept {
    if (FlushFileBuffers(HandleOf(::_fileno(file))) != 0) return true;
    const DWORD error = GetLastError();
    if (error == ERROR_INVALID_FUNCTION || error == ERROR_NOT_SUPPORTED) return true;
    TakeLastError();
    return false;
}

void SyncFolder(const fs::path&) noexcept {}  // a replacement is written through already

Copied CopyAll(std::FILE*, std::FILE*) noexcept { return Copied::Nothing; }

void KeepAside(const fs::path& path, const fs::path& second, std::error_code& error) {
    // A copy: a second name of the same file, once it is held, would keep the file from being replaced.
    error = CopyFileW(path.c_str(), second.c_str(), TRUE) != 0 ? std::error_code() : LastError();
}

void Replace(const fs::path& from, const fs::path& to, std::error_code& error) noexcept {
    constexpr DWORD kHow = MOVEFILE_REPLACE_EXISTING | MOVEFILE_WRITE_THROUGH;
    error = MoveFileExW(from.c_str(), to.c_str(), kHow) != 0 ? std::error_code() : LastError();
}

int ErrnoOf(int systemError) noexcept {
    switch (systemError) {
        case ERROR_SHARING_VIOLATION:
        case ERROR_LOCK_VIOLATION:
        case ERROR_USER_MAPPED_FILE:
            return EWOULDBLOCK;
        case ERROR_INVALID_NAME:
        case ERROR_BAD_PATHNAME:
        case ERROR_BAD_NETPATH:
        case ERROR_BAD_NET_NAME:
        case ERROR_INVALID_DRIVE:
        case ERROR_NOT_READY:
        case ERROR_FILE_NOT_FOUND:
        case ERROR_PATH_NOT_FOUND:
            return ENOENT;
        case ERROR_DISK_FULL:
        case ERROR_HANDLE_DISK_FULL:
            return ENOSPC;
        case ERROR_WRITE_PROTECT:
            return EROFS;
        case ERROR_FILENAME_EXCED_RANGE:
            return ENAMETOOLONG;
        case ERROR_ACCESS_DENIED:
            return EACCES;
        case ERROR_CRC:
        case ERROR_IO_DEVICE:
        case ERROR_WRITE_FAULT:
        case ERROR_READ_FAULT:
            return EIO;
        default:
            return std::system_category().default_error_condition(systemError).value();
    }
}

}  // namespace vlm::files::machine
