#include "windows/Handle.h"

#include <cerrno>
#include <fcntl.h>
#include <io.h>

#include "files/Machine.h"

namespace vlm::files::machine {

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

void TakeLastError() noexcept { errno = ErrnoOf(static_cast<int>(GetLastError())); }

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
