#include "files/Machine.h"

#include <cerrno>
#include <io.h>

#include "windows/Handle.h"

namespace vlm::files::machine {

namespace fs = std::filesystem;

namespace {

std::FILE* StreamOf(int descriptor, const char* mode) noexcept {
    if (descriptor < 0) return nullptr;
    std::FILE* const file = ::_fdopen(descriptor, mode);
    if (file == nullptr) ::_close(descriptor);
    return file;
}

std::error_code LastError() noexcept { return {static_cast<int>(GetLastError()), std::system_category()}; }

}  // namespace

std::FILE* OpenToRead(const fs::path& path) noexcept {
    return StreamOf(OpenDescriptor(path, GENERIC_READ, kShareAll, OPEN_EXISTING), "rb");
}

std::FILE* OpenToWrite(const fs::path& path) noexcept {
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

Copied CopyAll(std::FILE*, std::FILE*) noexcept { return Copied::Nothing; }

void KeepAside(const fs::path& path, const fs::path& second, std::error_code& error) {
    // A copy: a second name of the same file, once it is held, would keep the file from being replaced.
    error = CopyFileW(path.c_str(), second.c_str(), TRUE) != 0 ? std::error_code() : LastError();
}

void Replace(const fs::path& from, const fs::path& to, std::error_code& error) noexcept {
    constexpr DWORD kHow = MOVEFILE_REPLACE_EXISTING | MOVEFILE_WRITE_THROUGH;
    error = MoveFileExW(from.c_str(), to.c_str(), kHow) != 0 ? std::error_code() : LastError();
}

}  // namespace vlm::files::machine
