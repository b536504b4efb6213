#pragma once

#include <atomic>
#include <memory>
#include <optional>

#include "frame/Library.h"
#include "server/VlmHost.h"

namespace vlm::server {

class Composition;

/// What the library is between its loading and its unloading: the one Library, the number of objects alive, the locks.
class Module {
public:
    /// The only one.
    static Module& Get();

    Library& Lib() noexcept { return *library_; }
    /// False, and no change, while objects are alive. Null takes everything away. Throws Error, and changes nothing,
    /// for a host that asks for what there is not.
    bool SetHost(const VlmHost* host);
    /// Puts other services in the place of what was composed until the next host; they live as long. For tests.
    void SetServices(const Library::Services& services) { library_.emplace(services); }
    /// The host's help was asked for a topic.
    void HelpShown(std::int32_t context);

    /// Keeps the library loaded for as long as it lives.
    class Alive {
    public:
        Alive() noexcept { ++Get().objects_; }
        Alive(const Alive&) noexcept : Alive() {}
        Alive& operator=(const Alive&) = default;
        ~Alive() { --Get().objects_; }
    };
    void Lock(bool lock) noexcept;
    /// False too while the library holds something of its host's: the connection, the factory of services, the utility
    /// object. A host that never sets Connection to Nothing keeps the library loaded.
    bool CanUnload() const noexcept;

private:
    struct Holder;

    Module();
    ~Module();

    std::unique_ptr<Composition> composition_;
    std::optional<Library> library_;
    bool hasHost_ = false;
    std::atomic<long> objects_ = 0;
    std::atomic<long> locks_ = 0;
};

}  // namespace vlm::server
