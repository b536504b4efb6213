#pragma once

#include <string>

#include "automation/Ref.h"

namespace vlm::server {

/// The file that this code was loaded from.
std::wstring ModulePath();
/// The type library in that file; nothing when it has none. `kind` says whether it is entered into the registry too.
com::Ref<ITypeLib> LoadOwnTypeLibrary(REGKIND kind);

}  // namespace vlm::server
