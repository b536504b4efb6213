#include "files/Paths.h"

#include <algorithm>
#include <cerrno>
#include <chrono>

#include "files/Machine.h"
#include "values/LocalDate.h"
#include "values/Utf8.h"

namespace vlm::files {

std::string TextOf(const std::filesystem::path& native) {
    const std::u8string text = native.u8string();
    return {text.begin(), text.end()};
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

std::vector<std::string> FileNamesIn(std::string_view folder) {
    std::vector<std::string> names;
    std::error_code error;
    for (std::filesystem::directory_iterator entry(ToNative(folder), error), end; entry != end;
         entry.increment(error)) {
        if (error) break;
        if (!entry->is_regular_file(error)) continue;
        names.push_back(TextOf(entry->path().filename()));
    }
    std::sort(names.begin(), names.end(), [](const std::string& left, const std::string& right) {
        const int order = text::CompareNoCase(left, right);
        return order != 0 ? order < 0 : left < right;
    });
    return names;
}

bool IsFile(std::string_view path) noexcept { return FactsOf(path).has_value(); }

std::optional<FileFacts> FactsOf(std::string_view path) noexcept {
    try {
        namespace fs = std::filesystem;
        const fs::path native = ToNative(path);
        std::error_code error;
        if (path.empty() || !fs::is_regular_file(native, error)) return std::nullopt;
        const std::uint64_t size = fs::file_size(native, error);
        if (error) return std::nullopt;
        const fs::file_time_type changed = fs::last_write_time(native, error);
        if (error) return std::nullopt;
        using std::chrono::file_clock;
        using std::chrono::floor, std::chrono::seconds, std::chrono::system_clock;
        const auto moment = floor<seconds>(file_clock::to_sys(changed));
        return FileFacts{size, LocalDate(system_clock::to_time_t(moment)).value_or(Date{})};
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
#ifdef EDQUOT  // not every system knows quotas
        case EDQUOT:
            return "quota su disco esaurita";
#endif
        case ENOTEMPTY:
            return "la cartella non è vuota";
        default:
            return "errore di sistema " + std::to_string(error);
    }
}

std::string ReasonOf(const std::error_code& error) {
    const bool system = error.category() == std::system_category();
    return ReasonOf(system ? machine::ErrnoOf(error.value()) : error.value());
}

}  // namespace vlm::files
