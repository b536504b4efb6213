#pragma once

#include <cstdint>
#include <string>
#include <string_view>

#include "platform/text/Date.h"

/// What the library needs of the host's own components, as interfaces. The host implements them.
namespace vlm {

/// The host's shared utility object. Its null-tolerant reads `TextOf` and `NumberOf` are those of data::Recordset and
/// data::Value; here stands the rest.
class HostUtility {
public:
    virtual ~HostUtility() = default;
    /// A folder in which the host lets the library write, without "\" at its end.
    virtual std::string WorkFolder() const = 0;
    /// A complete SQL date literal, quotes included, with the time of day when the date has one. `option` 0 is the
    /// only form the library asks for.
    virtual std::string SqlDate(Date date, int option = 0) const = 0;
    /// A complete SQL text literal in single quotes, quotes inside doubled.
    virtual std::string SqlString(std::string_view value) const = 0;
};

/// The host's help. Both operations may throw; a help request that fails does nothing.
class HelpObject {
public:
    virtual ~HelpObject() = default;
    virtual void SetWindow(std::intptr_t windowHandle) = 0;
    virtual void ShowContext(std::int32_t context) = 0;
};

}  // namespace vlm
