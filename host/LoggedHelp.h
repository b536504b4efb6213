#pragma once

#include <functional>

#include "automation/Object.h"

namespace vlm::host {

/// The host's help as an automation object: a writable hWnd, and ShowContext, whose context number is told to whoever
/// shows it.
class LoggedHelp final : public com::DispatchObject<IDispatch> {
public:
    explicit LoggedHelp(std::function<void(std::int32_t context)> show) : show_(std::move(show)) {}

private:
    std::span<const com::Member> Members() const noexcept override;
    void* Find(const IID& iid) noexcept override;

    HRESULT STDMETHODCALLTYPE PutWindow(std::int32_t) { return S_OK; }
    HRESULT STDMETHODCALLTYPE ShowContext(std::int32_t context);

    std::function<void(std::int32_t)> show_;
};

}  // namespace vlm::host
