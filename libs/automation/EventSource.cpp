#include "automation/EventSource.h"

#include <new>

namespace vlm::com {

namespace {

Ref<IConnectionPoint> HandOut(const Ref<IConnectionPoint>& point) { return point; }
CONNECTDATA HandOut(const std::pair<DWORD, Ref<IDispatch>>& sink) { return {sink.second.Share(), sink.first}; }

void Put(IConnectionPoint*& place, Ref<IConnectionPoint> point) { place = point.Detach(); }
void Put(CONNECTDATA& place, CONNECTDATA data) { place = data; }

/// Goes through a list as it stood when the walk began.
template <typename Interface, typename Item, typename Given>
class Enumerator final : public Object<Interface> {
public:
    explicit Enumerator(std::vector<Given> items, std::size_t next = 0) : items_(std::move(items)), next_(next) {}

    HRESULT STDMETHODCALLTYPE Next(ULONG count, Item* items, ULONG* fetched) override {
        if (items == nullptr || (fetched == nullptr && count != 1)) return E_POINTER;
        ULONG given = 0;
        for (; given < count && next_ < items_.size(); ++given) Put(items[given], HandOut(items_[next_++]));
        if (fetched != nullptr) *fetched = given;
        return given == count ? S_OK : S_FALSE;
    }
    HRESULT STDMETHODCALLTYPE Skip(ULONG count) override {
        const std::size_t left = items_.size() - next_;
        next_ += count < left ? count : left;
        return count <= left ? S_OK : S_FALSE;
    }
    HRESULT STDMETHODCALLTYPE Reset() override {
        next_ = 0;
        return S_OK;
    }
    HRESULT STDMETHODCALLTYPE Clone(Interface** copy) override {
        if (copy == nullptr) return E_POINTER;
        *copy = new (std::nothrow) Enumerator(items_, next_);
        return *copy == nullptr ? E_OUTOFMEMORY : S_OK;
    }

private:
    std::vector<Given> items_;
    std::size_t next_;
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
        sink->Invoke(id, kNoId, 0, DISPATCH_METHOD, &parameters, ignored.Receive(), nullptr, nullptr);
    }
}

HRESULT EventSource::Points(IEnumConnectionPoints** points) {
    if (points == nullptr) return E_POINTER;
    using Points = Enumerator<IEnumConnectionPoints, IConnectionPoint*, Ref<IConnectionPoint>>;
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
    using Sinks = Enumerator<IEnumConnections, CONNECTDATA, std::pair<DWORD, Ref<IDispatch>>>;
    std::vector<std::pair<DWORD, Ref<IDispatch>>> sinks(sinks_.begin(), sinks_.end());
    *connections = new (std::nothrow) Sinks(std::move(sinks));
    return *connections == nullptr ? E_OUTOFMEMORY : S_OK;
}

}  // namespace vlm::com
