#include "automation/Variant.h"

#include <cmath>
#include <limits>

#include "values/Error.h"

namespace vlm::com {

Variant::Variant(bool truth) noexcept : Variant() {
    value_.vt = VT_BOOL;
    value_.boolVal = truth ? VARIANT_TRUE : VARIANT_FALSE;
}
Variant::Variant(std::int16_t number) noexcept : Variant() {
    value_.vt = VT_I2;
    value_.iVal = number;
}
Variant::Variant(std::int32_t number) noexcept : Variant() {
    value_.vt = VT_I4;
    value_.lVal = number;
}
Variant::Variant(std::int64_t number) noexcept : Variant() {
    value_.vt = VT_I8;
    value_.llVal = number;
}
Variant::Variant(double number) noexcept : Variant() {
    value_.vt = VT_R8;
    value_.dblVal = number;
}
Variant::Variant(Currency amount) noexcept : Variant() {
    value_.vt = VT_CY;
    value_.cyVal.int64 = amount.Units();
}
Variant::Variant(Date date) noexcept : Variant() {
    value_.vt = VT_DATE;
    value_.date = date.Serial();
}
Variant::Variant(std::string_view utf8) : Variant() {
    value_.bstrVal = Bstr(utf8).Detach();
    value_.vt = VT_BSTR;
}
Variant::Variant(IDispatch* object) noexcept : Variant() {
    value_.vt = VT_DISPATCH;
    value_.pdispVal = Ref(object).Detach();
}
Variant::Variant(const VARIANT& other) : Variant() {
    // Some systems declare the source without const, and leave it alone.
    if (FAILED(VariantCopy(&value_, const_cast<VARIANT*>(&other)))) throw std::bad_alloc();
}
Variant::Variant(Variant&& other) noexcept : value_(other.value_) { VariantInit(&other.value_); }

Variant& Variant::operator=(Variant other) noexcept {
    std::swap(value_, other.value_);
    return *this;
}

Variant Variant::Null() noexcept {
    Variant made;
    made.value_.vt = VT_NULL;
    return made;
}

Variant Variant::Missing() noexcept {
    Variant made;
    made.value_.vt = VT_ERROR;
    made.value_.scode = DISP_E_PARAMNOTFOUND;
    return made;
}

VARIANT Variant::Detach() noexcept {
    const VARIANT value = value_;
    VariantInit(&value_);
    return value;
}

Ref<IDispatch> Variant::Object() const noexcept {
    VARIANT place;
    const VARIANT& value = Resolve(value_, place);
    if (value.vt != VT_DISPATCH && value.vt != VT_UNKNOWN) return {};
    return Query<IDispatch>(value.punkVal);
}

data::Value Variant::Value() const { return ToValue(value_); }

const VARIANT& Resolve(const VARIANT& value, VARIANT& place) noexcept {
    if ((value.vt & VT_BYREF) == 0 || value.byref == nullptr) return value;
    if (value.vt == (VT_BYREF | VT_VARIANT)) {
        // A reference to a reference is as deep as automation goes.
        return value.pvarVal->vt == (VT_BYREF | VT_VARIANT) ? *value.pvarVal : Resolve(*value.pvarVal, place);
    }
    VariantInit(&place);
    const auto type = static_cast<VARTYPE>(value.vt & ~VT_BYREF);
    if ((type & VT_ARRAY) != 0) {
        place.parray = *value.pparray;
    } else {
        switch (type) {
            case VT_DECIMAL:
                place.decVal = *value.pdecVal;
                break;
            case VT_I1:
            case VT_UI1:
                place.bVal = *value.pbVal;
                break;
            case VT_I2:
            case VT_UI2:
            case VT_BOOL:
                place.iVal = *value.piVal;
                break;
            case VT_I4:
            case VT_UI4:
            case VT_INT:
            case VT_UINT:
            case VT_R4:
            case VT_ERROR:
                std::memcpy(&place.lVal, value.byref, sizeof place.lVal);
                break;
            case VT_BSTR:
            case VT_DISPATCH:
            case VT_UNKNOWN:
                std::memcpy(&place.byref, value.byref, sizeof place.byref);
                break;
            default:
                std::memcpy(&place.llVal, value.byref, sizeof place.llVal);
        }
    }
    place.vt = type;
    return place;
}

bool IsMissing(const VARIANT& value) noexcept { return value.vt == VT_ERROR && value.scode == DISP_E_PARAMNOTFOUND; }

namespace {

data::Value Whole(ULONGLONG number) {
    if (number > static_cast<ULONGLONG>(std::numeric_limits<std::int64_t>::max())) {
        throw OverflowError("Il numero " + std::to_string(number) + " è troppo grande.");
    }
    return static_cast<std::int64_t>(number);
}

data::Value FromDecimal(const DECIMAL& decimal) {
    constexpr int kAmountDecimals = 4;
    constexpr ULONGLONG kLargest = std::numeric_limits<std::int64_t>::max();
    const bool negative = decimal.sign != 0;
    ULONGLONG units = decimal.Lo64;
    int scale = decimal.scale;
    while (decimal.Hi32 == 0 && scale > 0 && units % 10 == 0) {  // 12.50 as an amount, 12.00 as 12
        units /= 10;
        --scale;
    }
    if (decimal.Hi32 == 0 && units <= kLargest && scale <= kAmountDecimals) {
        bool fits = true;
        for (int i = scale; scale > 0 && i < kAmountDecimals; ++i) {
            fits = fits && units <= kLargest / 10;
            units *= fits ? 10 : 1;
        }
        const auto whole = static_cast<std::int64_t>(units);
        if (scale == 0) return negative ? -whole : whole;
        if (fits) return Currency::FromUnits(negative ? -whole : whole);
    }
    const double magnitude = std::ldexp(static_cast<double>(decimal.Hi32), 64) + static_cast<double>(decimal.Lo64);
    const double number = magnitude / std::pow(10.0, decimal.scale);
    return negative ? -number : number;
}

}  // namespace

data::Value ToValue(const VARIANT& given) {
    VARIANT place;
    const VARIANT& value = Resolve(given, place);
    switch (value.vt) {
        case VT_EMPTY:
        case VT_NULL:
            return {};
        case VT_BOOL:
            return value.boolVal != VARIANT_FALSE;
        case VT_I1:
            return std::int64_t{static_cast<signed char>(value.bVal)};
        case VT_UI1:
            return std::int64_t{value.bVal};
        case VT_I2:
            return std::int64_t{value.iVal};
        case VT_UI2:
            return std::int64_t{value.uiVal};
        case VT_I4:
        case VT_INT:
            return std::int64_t{value.lVal};
        case VT_UI4:
        case VT_UINT:
            return std::int64_t{value.ulVal};
        case VT_I8:
            return std::int64_t{value.llVal};
        case VT_UI8:
            return Whole(value.ullVal);
        case VT_R4:
            return double{value.fltVal};
        case VT_R8:
            return value.dblVal;
        case VT_CY:
            return Currency::FromUnits(value.cyVal.int64);
        case VT_DATE:
            return Date(value.date);
        case VT_BSTR:
            return ToUtf8(value.bstrVal);
        case VT_DECIMAL:
            return FromDecimal(value.decVal);
        default:
            throw TypeMismatchError("Il valore ricevuto non è un testo, un numero o una data.");
    }
}

namespace {

struct VariantForm {
    Variant operator()(std::monostate) const { return Variant::Null(); }
    Variant operator()(const std::string& value) const { return Variant(std::string_view(value)); }
    template <typename T>
    Variant operator()(const T& value) const {
        return Variant(value);
    }
};

}  // namespace

Variant FromValue(const data::Value& value) { return std::visit(VariantForm{}, value); }

Variant FromValue(const data::Value& value, data::FieldType type) {
    if (const auto* whole = std::get_if<std::int64_t>(&value)) {
        if (type == data::FieldType::SmallInt) return Variant(static_cast<std::int16_t>(*whole));
        if (type == data::FieldType::Integer) return Variant(static_cast<std::int32_t>(*whole));
    }
    return FromValue(value);
}

}  // namespace vlm::com
