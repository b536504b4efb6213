#pragma once

#include "automation/Automation.h"

/// What programs are told of the library before they use it: its entries in the machine's registry, and the description
/// of the classes and interfaces that hosts compile against. Both are of Windows; elsewhere there is neither.
namespace vlm::server {

/// How many descriptions an object has: 1 or 0.
UINT TypeInfoCount() noexcept;
/// The description of an interface or a class, one reference added.
HRESULT GiveTypeInfo(const GUID& id, ITypeInfo** info) noexcept;

/// Enters the type library and the five classes into the registry, or takes them out. Where there is none both do
/// nothing and succeed.
HRESULT RegisterClasses() noexcept;
HRESULT UnregisterClasses() noexcept;

}  // namespace vlm::server
