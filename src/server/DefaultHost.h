#pragma once

#include <memory>

#include "frame/Library.h"

namespace vlm::server {

/// The services of the library as long as its host has handed in none.
class DefaultHost {
public:
    virtual ~DefaultHost() = default;
    /// They live as long as this object.
    virtual Library::Services Services() noexcept = 0;
};

/// What this machine has: on Windows the system's own, elsewhere nothing (each service throws Error and says so).
std::unique_ptr<DefaultHost> MakeDefaultHost();

}  // namespace vlm::server
