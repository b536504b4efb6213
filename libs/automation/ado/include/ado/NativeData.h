#pragma once

#include "automation/Guid.h"
#include "database/Connection.h"

namespace vlm::data::ado {

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
