#pragma once

#include <span>

#include "readers/SourceFormat.h"

/// The formats of the authorities that hand out one of their own, as their record descriptions have them.
namespace vlm::asl {

/// An entry of the import dialog's list of authorities.
struct Authority {
    const char* name;
    const SourceFormat* format = nullptr;  // of its own; null where a template of that name describes its lists
};

/// All of them in the order of the list. A choice in the list is a position here, from 0.
std::span<const Authority> Authorities() noexcept;

/// The one that hosts read without the dialog too.
extern const SourceFormat kLazio;

}  // namespace vlm::asl
