#pragma once

#include <map>
#include <string>
#include <string_view>
#include <vector>

#include "automation/Variant.h"
#include "values/Error.h"

namespace vlm::com {

/// A failure of which the object tells no more than its code.
class UntoldError : public Error {
public:
    using Error::Error;
};

/// Calls an object's members by name. Whatever fails throws Error with the number, the source and the description that
/// the object gives (UntoldError for want of a description); for a name that it does not have the text names it.
class LateBound {
public:
    LateBound() = default;
    explicit LateBound(Ref<IDispatch> object) : object_(std::move(object)) {}

    const Ref<IDispatch>& Object() const noexcept { return object_; }
    explicit operator bool() const noexcept { return static_cast<bool>(object_); }

    bool Has(std::string_view name) const { return IdOf(name) != DISPID_UNKNOWN; }
    Variant Get(std::string_view name, std::vector<Variant> arguments = {}) const;
    void Put(std::string_view name, Variant value) const;
    void PutRef(std::string_view name, IDispatch* value) const;
    Variant Call(std::string_view name, std::vector<Variant> arguments = {}) const;
    /// An element of a collection: its Item, else its default member.
    Variant Item(Variant index) const;
    /// All elements of a collection, in its enumerator's order; throws Error for an object that cannot be enumerated.
    std::vector<Variant> Elements() const;
    /// A member that gives an object; throws Error when it gives none.
    LateBound ObjectOf(std::string_view name, std::vector<Variant> arguments = {}) const;

private:
    DISPID IdOf(std::string_view name) const;
    Variant Invoke(std::string_view name, WORD flags, std::vector<Variant> arguments) const;
    Variant Invoke(std::string_view name, DISPID id, WORD flags, std::vector<Variant> arguments) const;

    Ref<IDispatch> object_;
    mutable std::map<std::string, DISPID, std::less<>> ids_;
};

}  // namespace vlm::com
