#pragma once

#include "automation/Members.h"

namespace vlm::server {

/// The members of a default interface for calls by name. What the library's own dialogs call on a component is not
/// among them. A member's identifier is its number in the interface's order, a property's functions sharing one.
template <typename Interface>
std::span<const com::Member> MembersOf() noexcept;

}  // namespace vlm::server
