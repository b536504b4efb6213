#include "frame/Settings.h"

namespace vlm {

namespace {

constexpr const char* kApplication = "Aldra";
constexpr const char* kSection = "Settings";

}  // namespace

std::string GetSetting(const Library& library, const std::string& key, const std::string& defaultValue) {
    return library.Settings().Get(kApplication, kSection, key, defaultValue);
}

void SaveSetting(const Library& library, const std::string& key, const std::string& value) {
    library.Settings().Save(kApplication, kSection, key, value);
}

}  // namespace vlm
