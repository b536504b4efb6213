#pragma once

#include <memory>
#include <optional>

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

/// What the library is between its loading and its unloading: the one Library, the number of objects alive, the locks.
class Module {
public:
    /// The only one.
    static Module& Get();

    Library& Lib() noexcept { return *library_; }
    /// False, and no change, while objects are alive. Null takes the services away.
    bool SetServices(const Library::Services* services);

    /// Keeps the library loaded for as long as it lives.
    class Alive {
    public:
        Alive() { ++Get().objects_; }
        Alive(const Alive&) : Alive() {}
        Alive& operator=(const Alive&) = default;
        ~Alive() { --Get().objects_; }
    };
    void Lock(bool lock) noexcept;
    bool CanUnload() const noexcept { return objects_ == 0 && locks_ == 0; }

private:
    Module();

    std::unique_ptr<DefaultHost> host_ = MakeDefaultHost();
    std::optional<Library> library_;
    long objects_ = 0;
    long locks_ = 0;
};

}  // namespace vlm::server
