#pragma once

#include <type_traits>
#include <utility>

#include "automation/Guid.h"

namespace vlm::com {

/// Holds one reference to an object, or none.
template <typename Interface>
class Ref {
public:
    Ref() = default;
    Ref(std::nullptr_t) noexcept {}
    /// Adds a reference of its own.
    explicit Ref(Interface* object) noexcept : object_(object) {
        if (object_ != nullptr) object_->AddRef();
    }
    Ref(const Ref& other) noexcept : Ref(other.object_) {}
    Ref(Ref&& other) noexcept : object_(std::exchange(other.object_, nullptr)) {}
    /// A class as one of its interfaces.
    template <typename Class>
    requires std::is_convertible_v<Class*, Interface*> Ref(Ref<Class> other)
    noexcept : object_(other.Detach()) {}
    ~Ref() { Reset(); }
    Ref& operator=(Ref other) noexcept {
        std::swap(object_, other.object_);
        return *this;
    }

    /// Takes over a reference that somebody else added.
    static Ref Adopt(Interface* object) noexcept {
        Ref made;
        made.object_ = object;
        return made;
    }

    Interface* Get() const noexcept { return object_; }
    Interface* operator->() const noexcept { return object_; }
    Interface& operator*() const noexcept { return *object_; }
    explicit operator bool() const noexcept { return object_ != nullptr; }

    void Reset() noexcept {
        Interface* const object = std::exchange(object_, nullptr);
        if (object != nullptr) object->Release();
    }
    /// Gives the reference away.
    Interface* Detach() noexcept { return std::exchange(object_, nullptr); }
    /// A reference more, for a caller.
    Interface* Share() const noexcept { return Ref(*this).Detach(); }

    /// Where a function puts the object that it hands out. Drops what is held.
    Interface** Receive() noexcept {
        Reset();
        return &object_;
    }
    void** ReceiveAny() noexcept { return reinterpret_cast<void**>(Receive()); }

private:
    Interface* object_ = nullptr;
};

/// The interface `id` of an object, as a pointer of type `Interface`; nothing when it does not offer it or is null.
template <typename Interface>
Ref<Interface> Query(IUnknown* object, const GUID& id = kIdOf<Interface>) noexcept {
    Ref<Interface> found;
    if (object != nullptr && FAILED(object->QueryInterface(id, found.ReceiveAny()))) return {};
    return found;
}

/// Whether two references are to one object.
inline bool SameObject(IUnknown* left, IUnknown* right) noexcept {
    return Query<IUnknown>(left).Get() == Query<IUnknown>(right).Get();
}

}  // namespace vlm::com
