#pragma once

#include "ado/AdoTypes.h"
#include "ado/RecordsetObject.h"
#include "automation/ErrorReport.h"
#include "automation/LateBound.h"
#include "automation/Object.h"
#include "values/Error.h"

namespace vlm::test {

/// A row set as a machine's data library makes them: closed, on no connection, to be opened for update by name. It is
/// one of ours once it is open.
class OpenableRows final : public com::DispatchObject<IDispatch> {
public:
    explicit OpenableRows(data::ConnectionPtr native) : native_(std::move(native)) {}

    HRESULT STDMETHODCALLTYPE GetIDsOfNames(REFIID reserved, LPOLESTR* names, UINT count, LCID locale,
                                            DISPID* ids) override {
        const bool own = !rows_ || com::ToUtf8(com::WideView(names[0])) == "Open";
        return own ? DispatchObject::GetIDsOfNames(reserved, names, count, locale, ids)
                   : rows_->GetIDsOfNames(reserved, names, count, locale, ids);
    }
    HRESULT STDMETHODCALLTYPE Invoke(DISPID id, REFIID reserved, LCID locale, WORD flags, DISPPARAMS* parameters,
                                     VARIANT* result, EXCEPINFO* exception, UINT* argument) override {
        return id == kOpen
                   ? DispatchObject::Invoke(id, reserved, locale, flags, parameters, result, exception, argument)
                   : rows_->Invoke(id, reserved, locale, flags, parameters, result, exception, argument);
    }

private:
    static constexpr DISPID kOpen = 1000;

    std::span<const com::Member> Members() const noexcept override {
        static constexpr std::array kMembers = {
            com::Method<&OpenableRows::Open>(
                "Open", kOpen, VT_EMPTY,
                {{"Source", VT_BSTR}, {"ActiveConnection", VT_DISPATCH}, {"CursorType", VT_I4}, {"LockType", VT_I4}}),
        };
        return kMembers;
    }
    HRESULT STDMETHODCALLTYPE Open(BSTR sql, IDispatch* connection, std::int32_t cursor, std::int32_t lock) {
        return com::Guarded("Provider", data::ado::kRecordsetId, [&] {
            const bool connected = static_cast<bool>(com::Query<IUnknown>(connection, data::ado::kConnectionId));
            if (!connected || cursor != 1 || lock != 3) throw Error("not opened for update");
            rows_ = com::Make<data::ado::RecordsetObject>(native_->OpenForUpdate(com::ToUtf8(sql)), native_);
        });
    }

    data::ConnectionPtr native_;
    com::Ref<IDispatch> rows_;
};

}  // namespace vlm::test
