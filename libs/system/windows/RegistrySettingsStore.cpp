#include "system/RegistrySettingsStore.h"

#include "system/Registry.h"
#include "values/Error.h"

namespace vlm::sys {

namespace {

std::string KeyOf(const std::string& application, const std::string& section) {
    return "Software\\VB and VBA Program Settings\\" + application + "\\" + section;
}

}  // namespace

std::string RegistrySettingsStore::Get(const std::string& application, const std::string& section,
                                       const std::string& key, const std::string& defaultValue) const {
    return registry::Read(HKEY_CURRENT_USER, KeyOf(application, section), key).value_or(defaultValue);
}

void RegistrySettingsStore::Save(const std::string& application, const std::string& section, const std::string& key,
                                 const std::string& value) {
    // Without a name the value would become the section's own, which nobody reads.
    const bool named = !application.empty() && !section.empty() && !key.empty();
    const LSTATUS status = named ? registry::Write(HKEY_CURRENT_USER, KeyOf(application, section), key, value)
                                 : static_cast<LSTATUS>(ERROR_INVALID_NAME);
    if (status == ERROR_SUCCESS) return;
    throw Error("Impossibile salvare l'impostazione \"" + key + "\": errore di sistema " + std::to_string(status) +
                ".");
}

}  // namespace vlm::sys
