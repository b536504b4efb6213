#include "TemplateFolder.h"

#include <algorithm>

#include "files/Paths.h"
#include "values/Utf8.h"

namespace vlm {

namespace {

bool EndsWithNoCase(std::string_view name, std::string_view end) {
    return name.size() > end.size() && text::EqualNoCase(name.substr(name.size() - end.size()), end);
}

}  // namespace

std::vector<std::string> TemplateFolder::Names(std::string_view extension) const {
    std::vector<std::string> names;
    for (std::string& file : files::FileNamesIn(path_)) {
        if (EndsWithNoCase(file, extension)) names.push_back(file.substr(0, file.size() - extension.size()));
    }
    return names;
}

std::string TemplateFolder::PathOf(const std::string& name, std::string_view extension) const {
    const std::string wanted = name + std::string(extension);
    const std::vector<std::string> there = files::FileNamesIn(path_);
    const auto exact = std::find(there.begin(), there.end(), wanted);
    const auto found = exact != there.end() ? exact : std::find_if(there.begin(), there.end(), [&](const auto& file) {
        return text::EqualNoCase(file, wanted);
    });
    return path_ + (found != there.end() ? *found : wanted);
}

}  // namespace vlm
