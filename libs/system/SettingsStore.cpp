#include "system/SettingsStore.h"

#include <array>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <string_view>
#include <system_error>

#include "IniFile.h"
#include "values/Error.h"
#include "values/Utf8.h"

namespace vlm::sys {

namespace fs = std::filesystem;

namespace {

fs::path PathOf(const std::string& utf8) { return std::u8string(utf8.begin(), utf8.end()); }

std::string SectionName(const std::string& application, const std::string& section) {
    return application + "\\" + section;
}

/// A name that the file's form cannot carry would be lost without a word.
void CheckName(const std::string& name, std::string_view forbidden) {
    if (name.empty() || name.find_first_of(forbidden) != std::string::npos || text::Trim(name) != name) {
        throw Error("Impossibile salvare l'impostazione: il nome \"" + name + "\" non è ammesso.");
    }
}

[[noreturn]] void Fail(const std::string& path, const std::string& reason) {
    throw Error("Impossibile salvare le impostazioni nel file \"" + path + "\": " + reason + ".");
}

/// False when the file is there but cannot be read; a file that is not there is empty.
bool ReadAll(const std::string& path, std::string& content) {
    std::error_code error;
    if (!fs::exists(PathOf(path), error)) return true;
    std::ifstream file(PathOf(path), std::ios::binary);
    if (!file || fs::is_directory(PathOf(path), error)) return false;
    content.assign(std::istreambuf_iterator<char>(file), {});
    return !file.bad();
}

void WriteAll(const std::string& path, const std::string& content) {
    std::error_code error;
    const fs::path target = PathOf(path);
    if (target.has_parent_path()) fs::create_directories(target.parent_path(), error);
    if (error) Fail(path, "la cartella non si può creare");
    const fs::path part = PathOf(path + ".part");
    std::ofstream file(part, std::ios::binary | std::ios::trunc);
    file.write(content.data(), static_cast<std::streamsize>(content.size()));
    file.close();
    if (file) fs::rename(part, target, error);
    if (!file || error) {
        fs::remove(part, error);
        Fail(path, "il file non si può scrivere");
    }
}

}  // namespace

std::string IniSettingsStore::DefaultPath() {
    constexpr std::array<std::pair<const char*, const char*>, 3> kFolders{
        {{"XDG_CONFIG_HOME", ""}, {"APPDATA", ""}, {"HOME", ".config"}}};
    for (const auto& [variable, below] : kFolders) {
        const char* folder = std::getenv(variable);
        if (folder == nullptr || !PathOf(folder).is_absolute()) continue;
        const std::u8string path = (PathOf(folder) / below / "vlm" / "settings.ini").u8string();
        return {path.begin(), path.end()};
    }
    return "settings.ini";
}

std::string IniSettingsStore::Get(const std::string& application, const std::string& section, const std::string& key,
                                  const std::string& defaultValue) const {
    std::string content;
    if (!ReadAll(path_, content)) return defaultValue;
    return IniFile(content).Find(SectionName(application, section), key).value_or(defaultValue);
}

void IniSettingsStore::Save(const std::string& application, const std::string& section, const std::string& key,
                            const std::string& value) {
    CheckName(application, "\r\n");
    CheckName(section, "\r\n");
    CheckName(key, "\r\n=[");
    std::string content;
    if (!ReadAll(path_, content)) Fail(path_, "il file non si può leggere");
    IniFile file(content);
    file.Put(SectionName(application, section), key, value);
    WriteAll(path_, file.Content());
}

}  // namespace vlm::sys
