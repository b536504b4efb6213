#include "automation/LateBound.h"

#include <algorithm>

#include "automation/ErrorReport.h"

namespace vlm::com {

namespace {

[[noreturn]] void ThrowUntold(std::string_view member, HRESULT code) {
    throw UntoldError(std::string(member) + " non è riuscito (" + CodeText(code) + ").", code);
}

/// What an object tells about a call that failed.
class Exception {
public:
    Exception() = default;
    Exception(const Exception&) = delete;
    Exception& operator=(const Exception&) = delete;
    ~Exception() {
        SysFreeString(info_.bstrSource);
        SysFreeString(info_.bstrDescription);
        SysFreeString(info_.bstrHelpFile);
    }
    EXCEPINFO* Receive() noexcept { return &info_; }

    [[noreturn]] void Throw(std::string_view member) {
        if (info_.pfnDeferredFillIn != nullptr) info_.pfnDeferredFillIn(&info_);
        const HRESULT code = info_.scode != 0 ? static_cast<HRESULT>(info_.scode) : ResultOf(info_.wCode);
        const std::string description = ToUtf8(info_.bstrDescription);
        if (description.empty()) ThrowUntold(member, code);
        throw Error(description, code, ToUtf8(info_.bstrSource));
    }

private:
    EXCEPINFO info_{};
};

}  // namespace

DISPID LateBound::IdOf(std::string_view name) const {
    const auto known = ids_.find(name);
    if (known != ids_.end()) return known->second;
    DISPID id = DISPID_UNKNOWN;
    WideText wide = ToWide(name);
    LPOLESTR names[] = {wide.data()};
    if (!object_ || FAILED(object_->GetIDsOfNames(kNoId, names, 1, kItalian, &id))) return DISPID_UNKNOWN;
    ids_.emplace(name, id);
    return id;
}

Variant LateBound::Invoke(std::string_view name, WORD flags, std::vector<Variant> arguments) const {
    const DISPID id = IdOf(name);
    if (id == DISPID_UNKNOWN) {
        throw Error("L'oggetto non ha il membro " + std::string(name) + ".", DISP_E_UNKNOWNNAME);
    }
    return Invoke(name, id, flags, std::move(arguments));
}

Variant LateBound::Invoke(std::string_view name, DISPID id, WORD flags, std::vector<Variant> arguments) const {
    std::reverse(arguments.begin(), arguments.end());
    std::vector<VARIANT> given;  // the values stay with `arguments`
    for (const Variant& argument : arguments) given.push_back(argument.Get());
    DISPID putId = DISPID_PROPERTYPUT;
    DISPPARAMS parameters{};
    parameters.rgvarg = given.data();
    parameters.cArgs = static_cast<UINT>(given.size());
    if ((flags & (DISPATCH_PROPERTYPUT | DISPATCH_PROPERTYPUTREF)) != 0) {
        parameters.rgdispidNamedArgs = &putId;
        parameters.cNamedArgs = 1;
    }
    Variant result;
    Exception exception;
    const HRESULT done =
        object_->Invoke(id, kNoId, kItalian, flags, &parameters, result.Receive(), exception.Receive(), nullptr);
    if (done == DISP_E_EXCEPTION) exception.Throw(name);
    if (FAILED(done)) ThrowUntold(name, done);
    return result;
}

Variant LateBound::Get(std::string_view name, std::vector<Variant> arguments) const {
    // As hosts' own languages call what may be a property or a function.
    return Invoke(name, DISPATCH_PROPERTYGET | DISPATCH_METHOD, std::move(arguments));
}

void LateBound::Put(std::string_view name, Variant value) const {
    std::vector<Variant> arguments;
    arguments.push_back(std::move(value));
    Invoke(name, DISPATCH_PROPERTYPUT, std::move(arguments));
}

void LateBound::PutRef(std::string_view name, IDispatch* value) const {
    Invoke(name, DISPATCH_PROPERTYPUTREF, {Variant(value)});
}

Variant LateBound::Call(std::string_view name, std::vector<Variant> arguments) const {
    return Invoke(name, DISPATCH_METHOD, std::move(arguments));
}

Variant LateBound::Item(Variant index) const {
    constexpr WORD kRead = DISPATCH_PROPERTYGET | DISPATCH_METHOD;
    std::vector<Variant> arguments;
    arguments.push_back(std::move(index));
    if (Has("Item")) return Invoke("Item", kRead, std::move(arguments));
    if (!object_) throw Error("Manca l'oggetto di cui leggere un elemento.");
    return Invoke("Item", DISPID_VALUE, kRead, std::move(arguments));
}

std::vector<Variant> LateBound::Elements() const {
    if (!object_) throw Error("Manca la raccolta di cui leggere gli elementi.");
    const Variant given = Invoke("_NewEnum", DISPID_NEWENUM, DISPATCH_PROPERTYGET | DISPATCH_METHOD, {});
    const bool object = given.Type() == VT_UNKNOWN || given.Type() == VT_DISPATCH;
    const Ref<IEnumVARIANT> enumerator = Query<IEnumVARIANT>(object ? given.Get().punkVal : nullptr);
    if (!enumerator) throw Error("La raccolta non si può scorrere.");
    std::vector<Variant> elements;
    for (;;) {
        Variant element;
        ULONG fetched = 0;
        const HRESULT done = enumerator->Next(1, element.Receive(), &fetched);
        if (FAILED(done)) throw Error("Lo scorrimento della raccolta non è riuscito (" + CodeText(done) + ").", done);
        if (done != S_OK || fetched == 0) return elements;
        elements.push_back(std::move(element));
    }
}

LateBound LateBound::ObjectOf(std::string_view name, std::vector<Variant> arguments) const {
    Ref<IDispatch> object = Get(name, std::move(arguments)).Object();
    if (!object) throw Error(std::string(name) + " non dà un oggetto.");
    return LateBound(std::move(object));
}

}  // namespace vlm::com
