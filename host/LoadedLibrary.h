#pragma once

#include <optional>
#include <string>

#include "automation/LateBound.h"
#include "server/VlmASLServicesLib.h"

namespace vlm::host {

/// The component library with this host's services, for as long as it lives. Everything that Create gave must be let go
/// before.
class LoadedLibrary {
public:
    /// Throws Error when objects of an earlier use are still alive.
    explicit LoadedLibrary(const Library::Services& services);
    LoadedLibrary(const LoadedLibrary&) = delete;
    LoadedLibrary& operator=(const LoadedLibrary&) = delete;
    ~LoadedLibrary() { VlmSetServices(nullptr); }

    /// A new component, from its class's factory.
    com::LateBound Create(const GUID& classId) const;
};

/// The class of a component that has a dialog to open; nothing for another name.
std::optional<GUID> ClassOf(const std::string& component);

}  // namespace vlm::host
