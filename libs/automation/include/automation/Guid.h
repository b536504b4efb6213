#pragma once

#include <cstring>
#include <string_view>

#include "automation/Automation.h"

namespace vlm::com {

namespace detail {
consteval unsigned HexDigit(char digit) {
    if (digit >= '0' && digit <= '9') return static_cast<unsigned>(digit - '0');
    if (digit >= 'A' && digit <= 'F') return static_cast<unsigned>(digit - 'A') + 10;
    throw "an identifier has the digits 0 to 9 and A to F";
}
consteval unsigned long long Hex(std::string_view digits) {
    unsigned long long value = 0;
    for (const char digit : digits) value = value * 16 + HexDigit(digit);
    return value;
}
}  // namespace detail

/// "800F005F-7CC3-4985-9175-4561517FB9F2", checked when compiled.
consteval GUID Guid(std::string_view text) {
    using detail::Hex;
    if (text.size() != 36 || text[8] != '-' || text[13] != '-' || text[18] != '-' || text[23] != '-') {
        throw "an identifier has groups of 8, 4, 4, 4 and 12 digits";
    }
    GUID guid{};
    guid.Data1 = static_cast<decltype(guid.Data1)>(Hex(text.substr(0, 8)));
    guid.Data2 = static_cast<decltype(guid.Data2)>(Hex(text.substr(9, 4)));
    guid.Data3 = static_cast<decltype(guid.Data3)>(Hex(text.substr(14, 4)));
    for (std::size_t i = 0; i < 8; ++i) {
        const std::size_t at = i < 2 ? 19 + 2 * i : 20 + 2 * i;
        guid.Data4[i] = static_cast<unsigned char>(Hex(text.substr(at, 2)));
    }
    return guid;
}

inline bool Same(const GUID& left, const GUID& right) noexcept { return std::memcmp(&left, &right, sizeof(GUID)) == 0; }

inline constexpr GUID kNoId{};

/// The identifier of an interface; each interface that is asked for by type has one.
template <typename Interface>
inline constexpr GUID kIdOf = Interface::kId;

template <>
inline constexpr GUID kIdOf<IUnknown> = Guid("00000000-0000-0000-C000-000000000046");
template <>
inline constexpr GUID kIdOf<IClassFactory> = Guid("00000001-0000-0000-C000-000000000046");
template <>
inline constexpr GUID kIdOf<IDispatch> = Guid("00020400-0000-0000-C000-000000000046");
template <>
inline constexpr GUID kIdOf<IEnumVARIANT> = Guid("00020404-0000-0000-C000-000000000046");
template <>
inline constexpr GUID kIdOf<IErrorInfo> = Guid("1CF2B120-547D-101B-8E65-08002B2BD119");
template <>
inline constexpr GUID kIdOf<ICreateErrorInfo> = Guid("22F03340-547D-101B-8E65-08002B2BD119");
template <>
inline constexpr GUID kIdOf<ISupportErrorInfo> = Guid("DF0B3D60-548F-101B-8E65-08002B2BD119");
template <>
inline constexpr GUID kIdOf<IProvideClassInfo> = Guid("B196B283-BAB4-101A-B69C-00AA00341D07");
template <>
inline constexpr GUID kIdOf<IProvideClassInfo2> = Guid("A6BC3AC0-DBAA-11CE-9DE3-00AA004BB851");
template <>
inline constexpr GUID kIdOf<IConnectionPointContainer> = Guid("B196B284-BAB4-101A-B69C-00AA00341D07");
template <>
inline constexpr GUID kIdOf<IEnumConnectionPoints> = Guid("B196B285-BAB4-101A-B69C-00AA00341D07");
template <>
inline constexpr GUID kIdOf<IConnectionPoint> = Guid("B196B286-BAB4-101A-B69C-00AA00341D07");
template <>
inline constexpr GUID kIdOf<IEnumConnections> = Guid("B196B287-BAB4-101A-B69C-00AA00341D07");

}  // namespace vlm::com
