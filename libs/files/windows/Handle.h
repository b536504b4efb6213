#pragma once

#include <filesystem>
#include <windows.h>

namespace vlm::files::machine {

/// An open file as the C library's descriptor, which closes the handle with it; -1 with errno when it cannot be opened.
/// `share` is what others may do meanwhile.
int OpenDescriptor(const std::filesystem::path& path, DWORD access, DWORD share, DWORD disposition) noexcept;
HANDLE HandleOf(int descriptor) noexcept;
/// errno from the error of the last system call.
void TakeLastError() noexcept;

inline constexpr DWORD kShareAll = FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE;

}  // namespace vlm::files::machine
