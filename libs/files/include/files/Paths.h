#pragma once

#include <cstdint>
#include <filesystem>
#include <optional>
#include <string>
#include <string_view>
#include <system_error>
#include <vector>

#include "values/Date.h"

/// Paths inside the library carry "\"; this room alone turns them into what the machine's file system takes.
namespace vlm::files {

std::filesystem::path ToNative(std::string_view path);
/// A path as a person or the machine gave it, in the library's form.
std::string ToLibrary(std::string_view path);

/// A path of the machine's as text. What it reads as inside the library is ToLibrary's business.
std::string TextOf(const std::filesystem::path& native);

/// These never fail: any error counts as "is not there".
bool IsDirectory(std::string_view path) noexcept;
/// Both are there and are the same folder, whatever their paths look like.
bool IsSameFolder(std::string_view left, std::string_view right) noexcept;
bool IsFile(std::string_view path) noexcept;

/// Names of the files in a folder, without regard to case in alphabetical order; none for a folder that is not there.
std::vector<std::string> FileNamesIn(std::string_view folder);

struct FileFacts {
    std::uint64_t size = 0;  // bytes
    Date lastChange;         // local time
};
/// Nothing when there is no file (a folder is no file).
std::optional<FileFacts> FactsOf(std::string_view path) noexcept;

/// "percorso inesistente", "accesso negato", ... for an errno value.
std::string ReasonOf(int error);
/// The same for an error of the standard library.
std::string ReasonOf(const std::error_code& error);

}  // namespace vlm::files
