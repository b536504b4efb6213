#pragma once

#include "system/InstallFolder.h"

namespace vlm::sys {

/// The folder that the host's setup has entered among the machine's application paths.
class RegistryInstallFolder : public InstallFolder {
public:
    std::string Path() const override;
};

}  // namespace vlm::sys
