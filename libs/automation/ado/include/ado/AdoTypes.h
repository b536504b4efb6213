#pragma once

#include <cstdint>

#include "automation/Guid.h"
#include "database/Connection.h"
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

/// What an automation object of ours offers beside, so that we meet ourselves without a detour through automation.
/// Private: both sides come from one build.
struct INativeConnection : IUnknown {
    static constexpr GUID kId = com::Guid("6F1C2B52-9E0B-4B9F-8C61-2A4D3E7B5A10");
    virtual const ConnectionPtr& STDMETHODCALLTYPE Native() noexcept = 0;

protected:
    ~INativeConnection() = default;
};

/// The row set lives as long as the object.
struct INativeRecordset : IUnknown {
    static constexpr GUID kId = com::Guid("0B7D5C7E-3A55-4F0D-9D3C-7E1B4C92F611");
    virtual Recordset& STDMETHODCALLTYPE Native() noexcept = 0;

protected:
    ~INativeRecordset() = default;
};

}  // namespace vlm::data::ado
