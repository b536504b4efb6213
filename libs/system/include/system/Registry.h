#pragma once

#include <optional>
#include <string>
#include <windows.h>

#include "system/InstallFolder.h"
#include "system/SettingsStore.h"

/// Text values of the machine's registry, in UTF-8. An empty value name is a key's default value.
namespace vlm::sys::registry {

/// Nothing for a key or a value that is not there, cannot be read or holds no text.
std::optional<std::string> Read(HKEY root, const std::string& key, const std::string& name);
/// Creates the key when it is missing. The system's error code, ERROR_SUCCESS when the value stands.
LSTATUS Write(HKEY root, const std::string& key, const std::string& name, const std::string& value) noexcept;
/// Removes a key with all below it; one that is not there counts as removed.
LSTATUS Remove(HKEY root, const std::string& key) noexcept;

}  // namespace vlm::sys::registry

namespace vlm::sys {

/// The settings where the host's own language keeps them: text values of the current user's key
/// "Software\VB and VBA Program Settings\application\section".
class RegistrySettingsStore : public SettingsStore {
public:
    std::string Get(const std::string& application, const std::string& section, const std::string& key,
                    const std::string& defaultValue) const override;
    void Save(const std::string& application, const std::string& section, const std::string& key,
              const std::string& value) override;
};

/// The folder that the host's setup has entered among the machine's application paths.
class RegistryInstallFolder : public InstallFolder {
public:
    std::string Path() const override;
};

}  // namespace vlm::sys
