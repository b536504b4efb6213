#pragma once

#include <map>
#include <string>

namespace vlm::sys {

/// Per-user string settings, kept by application and section. A missing key reads as the default.
class SettingsStore {
public:
    virtual ~SettingsStore() = default;
    virtual std::string Get(const std::string& application, const std::string& section, const std::string& key,
                            const std::string& defaultValue) const = 0;
    /// Throws Error when the value cannot be kept.
    virtual void Save(const std::string& application, const std::string& section, const std::string& key,
                      const std::string& value) = 0;
};

/// An ini file in UTF-8 with sections "[application\section]". Line breaks and "\" in values are escaped as \r \n \\.
/// Every Save rewrites the file whole and moves it into place; lines that are not ours are kept.
class IniSettingsStore : public SettingsStore {
public:
    explicit IniSettingsStore(std::string path) : path_(std::move(path)) {}
    /// The file under the user's configuration folder.
    static std::string DefaultPath();

    std::string Get(const std::string& application, const std::string& section, const std::string& key,
                    const std::string& defaultValue) const override;
    void Save(const std::string& application, const std::string& section, const std::string& key,
              const std::string& value) override;

private:
    std::string path_;
};

}  // namespace vlm::sys
