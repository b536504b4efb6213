#include "readers/ImportTemplate.h"

#include "files/LineReader.h"
#include "values/Error.h"
#include "values/Utf8.h"

namespace vlm {

namespace {

constexpr std::string_view kFileTypeMark = "[FILETYPE]";

bool HoldsFileType(std::string_view line) { return text::ToUpper(line).find(kFileTypeMark) != std::string::npos; }

/// The mark is taken out as it is written in capitals only: a type line in small letters gives no known type.
std::string FileTypeOf(std::string_view line) {
    std::string rest(line);
    for (std::size_t at = rest.find(kFileTypeMark); at != std::string::npos; at = rest.find(kFileTypeMark, at)) {
        rest.erase(at, kFileTypeMark.size());
    }
    return std::string(text::Trim(text::Without(rest, '=')));
}

}  // namespace

ImportTemplate ImportTemplate::Load(const std::string& path) {
    ImportTemplate loaded;
    files::LineReader reader(path);
    while (!reader.AtEnd()) loaded.TakeLine(reader.ReadLine());
    return loaded;
}

void ImportTemplate::TakeLine(std::string_view line) {
    if (HoldsFileType(line)) fileType_ = FileTypeOf(line);
    const std::size_t equals = line.find('=');
    if (line.empty() || line.front() != '[' || equals == std::string_view::npos) return;
    const std::string_view value = text::Trim(line.substr(equals + 1));
    if (value.empty()) return;
    const std::string key = text::Without(text::Without(text::Trim(line.substr(0, equals)), '['), ']');
    if (!values_.emplace(text::ToLower(key), value).second) {
        throw Error("La chiave " + key + " del modello è indicata più di una volta.");
    }
}

const std::string& ImportTemplate::GetTemplateValue(std::string_view key) const {
    static const std::string kNone;
    const auto found = values_.find(text::ToLower(key));
    return found == values_.end() ? kNone : found->second;
}

}  // namespace vlm
