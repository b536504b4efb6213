#pragma once

#include <cstdint>

#include "automation/Guid.h"
#include "values/Value.h"

namespace vlm::data::ado {

/// What a connection and a row set offer, whoever made them.
inline constexpr GUID kConnectionId = com::Guid("00000550-0000-0010-8000-00AA006D2EA4");
inline constexpr GUID kRecordsetId = com::Guid("00000555-0000-0010-8000-00AA006D2EA4");

inline constexpr std::int32_t kStateOpen = 1;
inline constexpr std::int32_t kCommandText = 1;
inline constexpr std::int32_t kOpenKeyset = 1;
inline constexpr std::int32_t kLockOptimistic = 3;
inline constexpr std::int32_t kExecuteNoRecords = 128;
inline constexpr std::int32_t kFieldUnspecified = -1;
inline constexpr std::int32_t kFieldIsNullable = 0x20;
inline constexpr std::int32_t kFieldNullable = kFieldIsNullable | 0x40;

/// Run-time error numbers of row sets.
inline constexpr std::int32_t kNoCurrentRow = 3021;
inline constexpr std::int32_t kNotSupported = 3251;
inline constexpr std::int32_t kItemNotFound = 3265;

/// The kind of column for a type number; Text for one that is nothing else.
FieldType FieldTypeOf(std::int32_t adoType);
std::int32_t AdoTypeOf(FieldType type);

}  // namespace vlm::data::ado
