#pragma once

#include "platform/automation/Object.h"
#include "platform/ui/console/EventLog.h"

namespace vlm::host {

/// The host's help as an automation object: a writable hWnd, and ShowContext, which is told to the log.
class LoggedHelp final : public com::DispatchObject<IDispatch> {
public:
    explicit LoggedHelp(ui::EventLog& log) : log_(log) {}

private:
    std::span<const com::Member> Members() const noexcept override;
    void* Find(const IID& iid) noexcept override;

    HRESULT STDMETHODCALLTYPE PutWindow(std::int32_t) { return S_OK; }
    HRESULT STDMETHODCALLTYPE ShowContext(std::int32_t context);

    ui::EventLog& log_;
};

}  // namespace vlm::host
