#pragma once

#include <map>
#include <vector>

#include "automation/Object.h"

namespace vlm::com {

/// The connection point of an object's only event interface, and the container that finds it. A member of the object:
/// it shares the object's references and ends with it.
class EventSource final : public IConnectionPoint {
public:
    /// `owner` is the object that this is a member of.
    EventSource(IConnectionPointContainer& owner, const GUID& events) : owner_(owner), events_(events) {}
    EventSource(const EventSource&) = delete;
    EventSource& operator=(const EventSource&) = delete;

    /// Calls every listener with one argument. A listener that fails does not keep the others from hearing.
    void Fire(DISPID id, const Variant& argument);

    // What the container answers.
    HRESULT Points(IEnumConnectionPoints** points);
    HRESULT Find(REFIID iid, IConnectionPoint** point);

    HRESULT STDMETHODCALLTYPE QueryInterface(REFIID iid, void** object) override;
    ULONG STDMETHODCALLTYPE AddRef() override { return owner_.AddRef(); }
    ULONG STDMETHODCALLTYPE Release() override { return owner_.Release(); }
    HRESULT STDMETHODCALLTYPE GetConnectionInterface(IID* iid) override;
    HRESULT STDMETHODCALLTYPE GetConnectionPointContainer(IConnectionPointContainer** container) override;
    HRESULT STDMETHODCALLTYPE Advise(IUnknown* sink, DWORD* cookie) override;
    HRESULT STDMETHODCALLTYPE Unadvise(DWORD cookie) override;
    HRESULT STDMETHODCALLTYPE EnumConnections(IEnumConnections** connections) override;

private:
    IConnectionPointContainer& owner_;
    const GUID events_;
    std::map<DWORD, Ref<IDispatch>> sinks_;
    DWORD lastCookie_ = 0;
};

}  // namespace vlm::com
