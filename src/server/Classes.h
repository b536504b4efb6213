#pragma once

#include <span>
#include <string_view>

#include "automation/Ref.h"

namespace vlm::server {

/// A class that the host can create.
struct ClassEntry {
    GUID id;
    std::string_view name;  // the programmatic name is the library's, a point, and this
    com::Ref<IUnknown> (*create)();
};

std::span<const ClassEntry> Classes() noexcept;

/// Null for an identifier that is none of ours.
const ClassEntry* FindClass(const GUID& classId) noexcept;

}  // namespace vlm::server
