#pragma once

/// The system's own ODBC headers, for this room's sources only: on Windows they bring the system's macros with them.

#ifdef _WIN32
#include <windows.h>
#endif

#include <cstdint>
#include <sql.h>
#include <sqlext.h>
#include <sqlucode.h>
#include <string>
#include <string_view>

#include "values/Utf16.h"

namespace vlm::data::odbc {

/// What the wide functions take and give: UTF-16 in units of two bytes on every system.
using WideText = std::basic_string<SQLWCHAR>;
using WideView = std::basic_string_view<SQLWCHAR>;

inline WideText Wide(std::string_view utf8) { return text::ToUtf16<SQLWCHAR>(utf8); }

/// Attributes that are numbers travel in a pointer's place.
inline SQLPOINTER AttributeValue(std::uintptr_t value) { return reinterpret_cast<SQLPOINTER>(value); }

}  // namespace vlm::data::odbc
