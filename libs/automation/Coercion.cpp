#include <cmath>

#include "ForeignText.h"
#include "automation/Variant.h"
#include "values/DateText.h"
#include "values/Error.h"
#include "values/Number.h"
#include "values/Utf8.h"

namespace vlm::com {

namespace {

constexpr double kFirstSerial = -657434;  // 1/1/100
constexpr double kEndSerial = 2958466;    // 1/1/10000

[[noreturn]] void ThrowMismatch() { throw TypeMismatchError("Tipo non corrispondente."); }
[[noreturn]] void ThrowOverflow() { throw OverflowError("Overflow."); }

std::string Trimmed(const data::Value& value) { return std::string(text::Trim(std::get<std::string>(value))); }

double Number(const data::Value& value) {
    if (!std::holds_alternative<std::string>(value)) return data::NumberOf(value);
    const auto number = text::ParseNumber(std::get<std::string>(value));
    if (!number) ThrowMismatch();
    return *number;
}

/// Half to even, checked against the target's width.
template <typename Integer>
Integer Whole(const data::Value& value) {
    std::int64_t whole = 0;
    if (const auto* exact = std::get_if<std::int64_t>(&value)) {
        whole = *exact;
    } else {
        whole = text::ToInt64(Number(value), "valore");
    }
    if (!std::in_range<Integer>(whole)) ThrowOverflow();
    return static_cast<Integer>(whole);
}

/// Truth is all bits set, also in a target without sign.
template <typename Integer>
Integer WholeOrTruth(const data::Value& value) {
    if (const auto* truth = std::get_if<bool>(&value)) return static_cast<Integer>(*truth ? -1 : 0);
    return Whole<Integer>(value);
}

bool Truth(const data::Value& value) {
    if (!std::holds_alternative<std::string>(value)) return data::NumberOf(value) != 0;
    const std::string content = Trimmed(value);
    if (text::EqualNoCase(content, "True") || text::EqualNoCase(content, "Vero")) return true;
    if (text::EqualNoCase(content, "False") || text::EqualNoCase(content, "Falso")) return false;
    return Number(value) != 0;
}

Currency Amount(const data::Value& value) {
    if (const auto* amount = std::get_if<Currency>(&value)) return *amount;
    if (const auto* whole = std::get_if<std::int64_t>(&value)) return Currency::FromInteger(*whole);
    if (const auto* content = std::get_if<std::string>(&value)) {
        const auto amount = text::ParseCurrency(*content);
        if (!amount) ThrowMismatch();
        return *amount;
    }
    return Currency::FromDouble(data::NumberOf(value));
}

Date DateValue(const data::Value& value) {
    if (const auto* date = std::get_if<Date>(&value)) return *date;
    if (std::holds_alternative<std::string>(value)) {
        if (const auto date = text::ParseDateText(Trimmed(value))) return *date;
    }
    const double serial = Number(value);
    if (!(serial >= kFirstSerial && serial < kEndSerial)) ThrowOverflow();
    return Date(serial);
}

float Single(const data::Value& value) {
    const double number = Number(value);
    const auto single = static_cast<float>(number);
    if (std::isinf(single) && !std::isinf(number)) ThrowOverflow();
    return single;
}

Variant Converted(const data::Value& value, VARTYPE type) {
    Variant made;
    VARIANT& target = made.Get();
    switch (type) {
        case VT_BOOL:
            return Variant(Truth(value));
        case VT_I1:
            target.bVal = static_cast<BYTE>(WholeOrTruth<std::int8_t>(value));
            break;
        case VT_UI1:
            target.bVal = WholeOrTruth<std::uint8_t>(value);
            break;
        case VT_I2:
            target.iVal = WholeOrTruth<std::int16_t>(value);
            break;
        case VT_UI2:
            target.uiVal = WholeOrTruth<std::uint16_t>(value);
            break;
        case VT_I4:
        case VT_INT:
            target.lVal = WholeOrTruth<std::int32_t>(value);
            break;
        case VT_UI4:
        case VT_UINT:
            target.ulVal = WholeOrTruth<std::uint32_t>(value);
            break;
        case VT_I8:
            target.llVal = WholeOrTruth<std::int64_t>(value);
            break;
        case VT_UI8:
            target.ullVal = WholeOrTruth<std::uint64_t>(value);
            break;
        case VT_R4:
            target.fltVal = Single(value);
            break;
        case VT_R8:
            target.dblVal = Number(value);
            break;
        case VT_CY:
            return Variant(Amount(value));
        case VT_DATE:
            return Variant(DateValue(value));
        default:
            return Variant(data::TextOf(value));
    }
    target.vt = type;
    return made;
}

bool IsKnown(VARTYPE type) {
    switch (type) {
        case VT_BOOL:
        case VT_I1:
        case VT_UI1:
        case VT_I2:
        case VT_UI2:
        case VT_I4:
        case VT_INT:
        case VT_UI4:
        case VT_UINT:
        case VT_I8:
        case VT_UI8:
        case VT_R4:
        case VT_R8:
        case VT_CY:
        case VT_DATE:
        case VT_BSTR:
            return true;
        default:
            return false;
    }
}

HRESULT CoerceObject(const VARIANT& value, VARTYPE type, Variant& target) {
    if (value.vt != VT_DISPATCH && value.vt != VT_UNKNOWN) return DISP_E_TYPEMISMATCH;
    Variant made;
    if (value.punkVal != nullptr) {
        IUnknown* const object =
            type == VT_DISPATCH ? Query<IDispatch>(value.punkVal).Detach() : Query<IUnknown>(value.punkVal).Detach();
        if (object == nullptr) return DISP_E_TYPEMISMATCH;
        made.Get().punkVal = object;
    }
    made.Get().vt = type;
    target = std::move(made);
    return S_OK;
}

/// The object's default property, which is what its value means to automation.
HRESULT CoerceDefault(IDispatch& object, VARTYPE type, Variant& target) {
    DISPPARAMS none{};
    Variant value;
    const HRESULT result =
        object.Invoke(DISPID_VALUE, kNoId, kItalian, DISPATCH_PROPERTYGET, &none, value.Receive(), nullptr, nullptr);
    if (FAILED(result) || value.Object()) return DISP_E_TYPEMISMATCH;
    return Coerce(value.Get(), type, target);
}

HRESULT CoerceChecked(const VARIANT& value, VARTYPE type, Variant& target) {
    if (type == VT_VARIANT || value.vt == type) {
        target = Variant(value);
        return S_OK;
    }
    if (type == VT_DISPATCH || type == VT_UNKNOWN) return CoerceObject(value, type, target);
    if (!IsKnown(type)) return DISP_E_BADVARTYPE;
    if (value.vt == VT_NULL) return DISP_E_TYPEMISMATCH;
    if (value.vt == VT_DISPATCH && value.pdispVal != nullptr) return CoerceDefault(*value.pdispVal, type, target);
    target = Converted(ToValue(value), type);
    return S_OK;
}

/// What a caller says who means no country in particular counts as Italian.
bool IsForeign(LCID locale) {
    constexpr LCID kLanguage = 0x3FF, kNeutral = 0, kInvariant = 0x7F, kItalianLanguage = 0x10;
    const LCID language = locale & kLanguage;
    return language != kNeutral && language != kInvariant && language != kItalianLanguage;
}

}  // namespace

HRESULT Coerce(const VARIANT& source, VARTYPE type, Variant& target, LCID locale) noexcept {
    try {
        VARIANT place;
        const VARIANT& value = Resolve(source, place);
        if (value.vt == VT_BSTR && type != VT_BSTR && IsKnown(type) && IsForeign(locale)) {
            return CoerceForeign(value, type, target, locale);
        }
        return CoerceChecked(value, type, target);
    } catch (const OverflowError&) {
        return DISP_E_OVERFLOW;
    } catch (const Error&) {
        return DISP_E_TYPEMISMATCH;
    } catch (...) {
        return E_OUTOFMEMORY;
    }
}

}  // namespace vlm::com
