#pragma once

#include "automation/Automation.h"

namespace vlm::server {

/// Enters the type library and the five classes into the machine's registry, or takes them out. Where there is no
/// registry both do nothing and succeed.
HRESULT RegisterClasses() noexcept;
HRESULT UnregisterClasses() noexcept;

}  // namespace vlm::server
