#include "automation/Members.h"

#include <algorithm>

#include "automation/ErrorReport.h"

namespace vlm::com {

namespace {

/// Names of members are ASCII, so no other letter needs its case folded.
OLECHAR Folded(OLECHAR character) {
    return character >= 'A' && character <= 'Z' ? static_cast<OLECHAR>(character + ('a' - 'A')) : character;
}

bool SameName(std::string_view name, const OLECHAR* given) {
    if (given == nullptr) return false;
    for (const char each : name) {
        if (*given == 0 || Folded(static_cast<OLECHAR>(each)) != Folded(*given)) return false;
        ++given;
    }
    return *given == 0;
}

/// The arguments of one call, brought into the order and the types of a member's parameters.
class Arguments {
public:
    Arguments(const Member& member, const Call& call) : member_(member), call_(call) {}

    HRESULT Collect() {
        const HRESULT result = Assign();
        if (FAILED(result)) return result;
        for (std::size_t i = 0; i < member_.parameterCount; ++i) {
            const HRESULT converted = Convert(i);
            if (FAILED(converted)) return converted;
        }
        return S_OK;
    }

    VARIANT* Values() noexcept { return values_.data(); }
    ~Arguments() {
        for (VARIANT& value : values_) VariantClear(&value);
    }
    Arguments(const Arguments&) = delete;
    Arguments& operator=(const Arguments&) = delete;

private:
    static constexpr UINT kNotGiven = ~UINT{0};

    HRESULT Fault(HRESULT result, UINT place) const {
        if (call_.argument != nullptr && place != kNotGiven) *call_.argument = place;
        return result;
    }

    /// Finds for each parameter its place among the given arguments.
    HRESULT Assign() {
        places_.fill(kNotGiven);
        for (VARIANT& value : values_) VariantInit(&value);
        const DISPPARAMS& given = *call_.given;
        if (given.cNamedArgs > given.cArgs) return DISP_E_BADPARAMCOUNT;
        const UINT positional = given.cArgs - given.cNamedArgs;
        if (given.cArgs > member_.parameterCount) return DISP_E_BADPARAMCOUNT;
        for (UINT i = 0; i < positional; ++i) places_[i] = given.cArgs - 1 - i;
        for (UINT i = 0; i < given.cNamedArgs; ++i) {
            const DISPID id = given.rgdispidNamedArgs[i];
            const std::size_t at = id == DISPID_PROPERTYPUT ? member_.parameterCount - 1 : static_cast<std::size_t>(id);
            if (at >= member_.parameterCount || places_[at] != kNotGiven) return Fault(DISP_E_PARAMNOTFOUND, i);
            places_[at] = i;
        }
        for (std::size_t i = 0; i < member_.parameterCount; ++i) {
            if (places_[i] == kNotGiven && !member_.parameters[i].optional) return DISP_E_BADPARAMCOUNT;
        }
        return S_OK;
    }

    HRESULT Convert(std::size_t at) {
        const Parameter& parameter = member_.parameters[at];
        const UINT place = places_[at];
        const VARIANT* given = place == kNotGiven ? nullptr : &call_.given->rgvarg[place];
        if (given == nullptr || IsMissing(*given)) {
            if (!parameter.optional) return Fault(DISP_E_PARAMNOTOPTIONAL, place);
            // As wide as any number, and a null text or object.
            values_[at] = parameter.type == VT_VARIANT ? Variant::Missing().Detach()
                                                       : Variant(std::int64_t{parameter.absent}).Detach();
            return S_OK;
        }
        if (parameter.type == VT_VARIANT) {  // as it comes, with what it points to
            return VariantCopy(&values_[at], const_cast<VARIANT*>(given));
        }
        Variant converted;
        const HRESULT result = Coerce(*given, parameter.type, converted, call_.locale);
        if (FAILED(result)) return Fault(result, place);
        if (parameter.interfaceId != nullptr && converted.Get().pdispVal != nullptr) {
            Ref<IDispatch> wanted = Query<IDispatch>(converted.Get().pdispVal, *parameter.interfaceId);
            if (!wanted) return Fault(DISP_E_TYPEMISMATCH, place);
            converted = Variant(wanted.Get());
        }
        values_[at] = converted.Detach();
        return S_OK;
    }

    const Member& member_;
    const Call& call_;
    std::array<UINT, kMostParameters> places_{};
    std::array<VARIANT, kMostParameters> values_{};
};

bool HoldsObject(const DISPPARAMS& given) {
    if (given.cArgs == 0) return false;
    VARIANT place;
    const VARTYPE type = Resolve(given.rgvarg[0], place).vt;
    return type == VT_DISPATCH || type == VT_UNKNOWN;
}

const Member* Find(std::span<const Member> members, const Call& call, WORD flags) {
    const auto found = std::find_if(members.begin(), members.end(), [&](const Member& member) {
        return member.id == call.id && (member.kind & flags) != 0;
    });
    return found == members.end() ? nullptr : &*found;
}

const Member* FindCalled(std::span<const Member> members, const Call& call) {
    const Member* found = Find(members, call, call.flags);
    if (found == nullptr && (call.flags & DISPATCH_PROPERTYPUT) != 0 && HoldsObject(*call.given)) {
        found = Find(members, call, DISPATCH_PROPERTYPUTREF);
    }
    return found;
}

HRESULT TellException(HRESULT failure, EXCEPINFO* exception) {
    if (exception == nullptr) return DISP_E_EXCEPTION;
    *exception = EXCEPINFO{};
    exception->scode = failure;
    Ref<IErrorInfo> info;
    GetErrorInfo(0, info.Receive());
    if (info) {
        info->GetSource(&exception->bstrSource);
        info->GetDescription(&exception->bstrDescription);
    }
    return DISP_E_EXCEPTION;
}

}  // namespace

HRESULT FindIds(std::span<const Member> members, LPOLESTR* names, UINT count, DISPID* ids) noexcept {
    if (names == nullptr || ids == nullptr || count == 0) return E_INVALIDARG;
    std::fill_n(ids, count, DISPID_UNKNOWN);
    const auto found = std::find_if(members.begin(), members.end(),
                                    [&](const Member& member) { return SameName(member.name, names[0]); });
    if (found == members.end()) return DISP_E_UNKNOWNNAME;
    ids[0] = found->id;
    HRESULT result = S_OK;
    for (UINT i = 1; i < count; ++i) {
        for (std::size_t at = 0; at < found->parameterCount; ++at) {
            if (SameName(found->parameters[at].name, names[i])) ids[i] = static_cast<DISPID>(at);
        }
        if (ids[i] == DISPID_UNKNOWN) result = DISP_E_UNKNOWNNAME;
    }
    return result;
}

HRESULT Invoke(std::span<const Member> members, IDispatch& self, const Call& call) noexcept {
    if (call.given == nullptr) return E_INVALIDARG;
    const Member* member = FindCalled(members, call);
    if (member == nullptr) return DISP_E_MEMBERNOTFOUND;
    Arguments arguments(*member, call);
    const HRESULT collected = arguments.Collect();
    if (FAILED(collected)) return collected;
    SetErrorInfo(0, nullptr);
    Variant result;
    const HRESULT done = member->call(self, arguments.Values(), result.Get());
    if (FAILED(done)) {
        result.Detach();  // a member that fails hands nothing out
        return TellException(done, call.exception);
    }
    if (member->result != VT_EMPTY && member->result != VT_VARIANT) result.Get().vt = member->result;
    if (result.Type() == VT_I8 && member->result == VT_I8 && std::in_range<std::int32_t>(result.Get().llVal)) {
        result = Variant(static_cast<std::int32_t>(result.Get().llVal));
    }
    if (call.result != nullptr) *call.result = result.Detach();
    return S_OK;
}

}  // namespace vlm::com
