#pragma once

#include "system/SettingsStore.h"

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

}  // namespace vlm::sys
