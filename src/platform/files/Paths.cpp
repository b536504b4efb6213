#include "platform/files/Paths.h"

#include <algorithm>
#include <cerrno>
#include <ctime>
#include <sys/stat.h>

namespace vlm::files {

std::filesystem::path ToNative(std::string_view path) {
    std::string native(path);
#ifndef _WIN32
    std::replace(native.begin(), native.end(), '\\', '/');
    return native;
#else
    return std::filesystem::u8path(native);
#endif
}

std::string ToLibrary(std::string_view path) {
    std::string result(path);
#ifndef _WIN32
    std::replace(result.begin(), result.end(), '/', '\\');
#endif
    return result;
}

bool IsDirectory(std::string_view path) noexcept {
    try {
        std::error_code error;
        return std::filesystem::is_directory(ToNative(path), error);
    } catch (...) {
        return false;
    }
}

bool IsSameFolder(std::string_view left, std::string_view right) noexcept {
    try {
        std::error_code error;
        return std::filesystem::equivalent(ToNative(left), ToNative(right), error);
    } catch (...) {
        return false;
    }
}

bool IsFile(std::string_view path) noexcept { return FactsOf(path).has_value(); }

std::optional<FileFacts> FactsOf(std::string_view path) noexcept {
    try {
        struct stat status {};
        if (path.empty() || ::stat(ToNative(path).string().c_str(), &status) != 0 || !S_ISREG(status.st_mode)) {
            return std::nullopt;
        }
        std::tm local{};
#ifdef _WIN32
        localtime_s(&local, &status.st_mtime);
#else
        localtime_r(&status.st_mtime, &local);
#endif
        const auto changed = Date::FromCivil({local.tm_year + 1900, local.tm_mon + 1, local.tm_mday, local.tm_hour,
                                              local.tm_min, std::min(local.tm_sec, 59)});
        return FileFacts{static_cast<std::uint64_t>(status.st_size), changed.value_or(Date{})};
    } catch (...) {
        return std::nullopt;
    }
}

std::string ReasonOf(int error) {
    switch (error) {
        case ENOENT:
        case ENOTDIR:
            return "percorso inesistente";
        case EACCES:
        case EPERM:
            return "accesso negato";
        case ENOSPC:
            return "spazio su disco esaurito";
        case EROFS:
            return "supporto di sola lettura";
        case EISDIR:
            return "è una cartella";
        case EFBIG:
            return "file troppo grande";
        case EWOULDBLOCK:
            return "file in uso da un altro programma";
        case ENAMETOOLONG:
            return "nome troppo lungo";
        case EIO:
            return "errore del disco";
        case EDQUOT:
            return "quota su disco esaurita";
        case ENOTEMPTY:
            return "la cartella non è vuota";
        default:
            return "errore di sistema " + std::to_string(error);
    }
}

}  // namespace vlm::files
