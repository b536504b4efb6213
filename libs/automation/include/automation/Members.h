#pragma once

#include <array>
#include <initializer_list>
#include <span>
#include <string_view>
#include <type_traits>

#include "automation/Variant.h"

/// The members of an object as data: what a late-bound call needs to find one, to convert its arguments and to call it.
namespace vlm::com {

inline constexpr std::size_t kMostParameters = 5;

struct Parameter {
    std::string_view name;
    VARTYPE type = VT_VARIANT;  // VT_VARIANT takes the argument as it comes
    bool optional = false;
    std::int32_t absent = 0;            // what an optional number is when it is not given
    const GUID* interfaceId = nullptr;  // what an object must offer; the callee gets that interface
};

struct Member {
    std::string_view name;  // ASCII
    DISPID id = 0;
    WORD kind = 0;  // one of DISPATCH_METHOD, _PROPERTYGET, _PROPERTYPUT, _PROPERTYPUTREF
    VARTYPE result = VT_EMPTY;
    std::array<Parameter, kMostParameters> parameters{};
    std::size_t parameterCount = 0;
    /// `arguments` one for each parameter, of its type; `result` is empty and gets a value of the type `result`.
    HRESULT (*call)(IDispatch& self, VARIANT* arguments, VARIANT& result) = nullptr;
};

namespace detail {

/// Whether a function's last parameter is where it puts its result.
template <typename T>
inline constexpr bool kIsPlace = false;
template <typename T>
inline constexpr bool kIsPlace<T*> = std::is_same_v<T, VARIANT> ||
                                     (std::is_arithmetic_v<T> && !std::is_same_v<T, OLECHAR>) || std::is_pointer_v<T>;

/// The place in a value where a C++ type stands.
template <typename T>
decltype(auto) Place(VARIANT& value) {
    if constexpr (std::is_same_v<T, VARIANT>) {
        return (value);
    } else if constexpr (std::is_same_v<T, double>) {
        return (value.dblVal);
    } else if constexpr (std::is_same_v<T, BSTR>) {
        return (value.bstrVal);
    } else if constexpr (std::is_same_v<T, IUnknown*>) {
        return (value.punkVal);
    } else if constexpr (std::is_pointer_v<T>) {
        static_assert(std::is_same_v<T, IDispatch*>);
        return (value.pdispVal);
    } else if constexpr (sizeof(T) == 8) {
        return (value.llVal);
    } else if constexpr (sizeof(T) == 1) {
        return (value.bVal);
    } else if constexpr (sizeof(T) == 2) {
        return (value.iVal);
    } else if constexpr (std::is_same_v<T, decltype(value.lVal)>) {
        return (value.lVal);
    } else {
        static_assert(sizeof(T) == sizeof(int));
        return (value.intVal);
    }
}

template <typename T>
T Argument(VARIANT& value) {
    if constexpr (std::is_reference_v<T>) {
        static_assert(std::is_same_v<T, const VARIANT&>);
        return value;
    } else if constexpr (std::is_same_v<T, VARIANT*>) {  // something more that is handed out, where the caller has room
        return value.vt == (VT_BYREF | VT_VARIANT) ? value.pvarVal : nullptr;
    } else {
        return static_cast<T>(Place<T>(value));
    }
}

template <auto Function>
struct Thunk;
template <typename Class, typename... Types, HRESULT (STDMETHODCALLTYPE Class::*Function)(Types...)>
struct Thunk<Function> {
    static HRESULT Call(IDispatch& self, VARIANT* arguments, VARIANT& result) {
        return CallWith(static_cast<Class&>(self), arguments, result, std::index_sequence_for<Types...>());
    }
    template <std::size_t... At>
    static HRESULT CallWith(Class& self, [[maybe_unused]] VARIANT* arguments, [[maybe_unused]] VARIANT& result,
                            std::index_sequence<At...>) {
        constexpr std::size_t kLast = sizeof...(Types) - 1;
        return (self.*Function)([&]() -> Types {
            if constexpr (At == kLast && kIsPlace<Types>) {
                return reinterpret_cast<Types>(&Place<std::remove_pointer_t<Types>>(result));
            } else {
                return Argument<Types>(arguments[At]);
            }
        }()...);
    }
};

template <auto Function>
constexpr Member Make(WORD kind, std::string_view name, DISPID id, VARTYPE result,
                      std::initializer_list<Parameter> parameters) {
    Member member{name, id, kind, result, {}, 0, &Thunk<Function>::Call};
    for (const Parameter& parameter : parameters) member.parameters[member.parameterCount++] = parameter;
    return member;
}

}  // namespace detail

template <auto Function>
constexpr Member Method(std::string_view name, DISPID id, VARTYPE result = VT_EMPTY,
                        std::initializer_list<Parameter> parameters = {}) {
    return detail::Make<Function>(DISPATCH_METHOD, name, id, result, parameters);
}
template <auto Function>
constexpr Member Get(std::string_view name, DISPID id, VARTYPE type, std::initializer_list<Parameter> parameters = {}) {
    return detail::Make<Function>(DISPATCH_PROPERTYGET, name, id, type, parameters);
}
template <auto Function>
constexpr Member Put(std::string_view name, DISPID id, VARTYPE type) {
    return detail::Make<Function>(DISPATCH_PROPERTYPUT, name, id, VT_EMPTY, {{"Value", type}});
}
/// A property of elements, each found by an index.
template <auto Function>
constexpr Member PutAt(std::string_view name, DISPID id, VARTYPE type) {
    return detail::Make<Function>(DISPATCH_PROPERTYPUT, name, id, VT_EMPTY, {{"Index"}, {"Value", type}});
}
/// `interfaceId` null takes any object.
template <auto Function>
constexpr Member PutRef(std::string_view name, DISPID id, const GUID* interfaceId = nullptr) {
    return detail::Make<Function>(DISPATCH_PROPERTYPUTREF, name, id, VT_EMPTY,
                                  {{"Value", VT_DISPATCH, false, 0, interfaceId}});
}

/// IDispatch::GetIDsOfNames: a member's name without regard to case, then names of its parameters.
HRESULT FindIds(std::span<const Member> members, LPOLESTR* names, UINT count, DISPID* ids) noexcept;

/// A late-bound call as it comes in.
struct Call {
    DISPID id;
    WORD flags;
    const DISPPARAMS* given;
    VARIANT* result;       // may be null
    EXCEPINFO* exception;  // may be null
    UINT* argument;        // may be null; gets the place in `given` of an argument that is wrong
    LCID locale = 0;       // of the texts among the arguments
};

/// IDispatch::Invoke. A member that fails gives DISP_E_EXCEPTION with its code and its error object's texts; an object
/// put by value into a property that takes references is taken as a reference. A result of 64 bits is handed out in 32
/// where it fits: the languages of scripts know no wider one.
HRESULT Invoke(std::span<const Member> members, IDispatch& self, const Call& call) noexcept;

}  // namespace vlm::com
