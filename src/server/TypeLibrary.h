#pragma once

#include "automation/Automation.h"

/// The description of the classes and interfaces that hosts compile against. It is part of the library on Windows;
/// elsewhere nobody reads such descriptions and there is none.
namespace vlm::server {

/// How many descriptions an object has: 1 or 0.
UINT TypeInfoCount() noexcept;
/// The description of an interface or a class, one reference added.
HRESULT GiveTypeInfo(const GUID& id, ITypeInfo** info) noexcept;

}  // namespace vlm::server
