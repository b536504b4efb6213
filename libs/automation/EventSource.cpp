#include "automation/EventSource.h"

#include "automation/Enumerator.h"

namespace vlm::com {

namespace {

struct HandOut {
    static IConnectionPoint* Copy(const Ref<IConnectionPoint>& point) { return point.Share(); }
    static CONNECTDATA Copy(const std::pair<DWORD, Ref<IDispatch>>& sink) { return {sink.second.Share(), sink.first}; }
};

}  // namespace

void EventSource::Fire(DISPID id, const Variant& argument) {
    const Ref<IConnectionPointContainer> alive(&owner_);
    const std::map<DWORD, Ref<IDispatch>> sinks = sinks_;  // a listener may leave while it hears
    for (const auto& [cookie, sink] : sinks) {
        Variant given = argument;
        DISPPARAMS parameters{};
        parameters.rgvarg = &given.Get();
        parameters.cArgs = 1;
        Variant ignored;
        sink->Invoke(id, kNoId, kItalian, DISPATCH_METHOD, &parameters, ignored.Receive(), nullptr, nullptr);
    }
}

HRESULT EventSource::Points(IEnumConnectionPoints** points) {
    if (points == nullptr) return E_POINTER;
    using Points = Enumerator<IEnumConnectionPoints, IConnectionPoint*, Ref<IConnectionPoint>, HandOut>;
    *points = new (std::nothrow) Points({Ref<IConnectionPoint>(this)});
    return *points == nullptr ? E_OUTOFMEMORY : S_OK;
}

HRESULT EventSource::Find(REFIID iid, IConnectionPoint** point) {
    if (point == nullptr) return E_POINTER;
    *point = nullptr;
    if (!Same(iid, events_)) return CONNECT_E_NOCONNECTION;
    AddRef();
    *point = this;
    return S_OK;
}

HRESULT EventSource::QueryInterface(REFIID iid, void** object) {
    if (object == nullptr) return E_POINTER;
    *object = nullptr;
    if (!Same(iid, kIdOf<IUnknown>) && !Same(iid, kIdOf<IConnectionPoint>)) return E_NOINTERFACE;
    AddRef();
    *object = static_cast<IConnectionPoint*>(this);
    return S_OK;
}

HRESULT EventSource::GetConnectionInterface(IID* iid) {
    if (iid == nullptr) return E_POINTER;
    *iid = events_;
    return S_OK;
}

HRESULT EventSource::GetConnectionPointContainer(IConnectionPointContainer** container) {
    if (container == nullptr) return E_POINTER;
    owner_.AddRef();
    *container = &owner_;
    return S_OK;
}

HRESULT EventSource::Advise(IUnknown* sink, DWORD* cookie) {
    if (sink == nullptr || cookie == nullptr) return E_POINTER;
    *cookie = 0;
    Ref<IDispatch> listener = Query<IDispatch>(sink, events_);
    if (!listener) listener = Query<IDispatch>(sink);
    if (!listener) return CONNECT_E_CANNOTCONNECT;
    try {
        sinks_.emplace(++lastCookie_, std::move(listener));
    } catch (const std::bad_alloc&) {
        return E_OUTOFMEMORY;
    }
    *cookie = lastCookie_;
    return S_OK;
}

HRESULT EventSource::Unadvise(DWORD cookie) {
    const auto found = sinks_.find(cookie);
    if (found == sinks_.end()) return CONNECT_E_NOCONNECTION;
    const Ref<IDispatch> last = std::move(found->second);  // whatever its release does, the list is whole
    sinks_.erase(found);
    return S_OK;
}

HRESULT EventSource::EnumConnections(IEnumConnections** connections) {
    if (connections == nullptr) return E_POINTER;
    using Sinks = Enumerator<IEnumConnections, CONNECTDATA, std::pair<DWORD, Ref<IDispatch>>, HandOut>;
    std::vector<std::pair<DWORD, Ref<IDispatch>>> sinks(sinks_.begin(), sinks_.end());
    *connections = new (std::nothrow) Sinks(std::move(sinks));
    return *connections == nullptr ? E_OUTOFMEMORY : S_OK;
}

}  // namespace vlm::com
