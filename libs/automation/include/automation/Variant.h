#pragma once

#include "automation/Bstr.h"
#include "automation/Ref.h"
#include "values/Value.h"

namespace vlm::com {

/// An automation value that is cleared with it.
class Variant {
public:
    Variant() noexcept { VariantInit(&value_); }
    explicit Variant(bool truth) noexcept;
    explicit Variant(std::int16_t number) noexcept;
    explicit Variant(std::int32_t number) noexcept;
    explicit Variant(std::int64_t number) noexcept;
    explicit Variant(double number) noexcept;
    explicit Variant(Currency amount) noexcept;
    explicit Variant(Date date) noexcept;
    explicit Variant(std::string_view utf8);
    explicit Variant(const char* utf8) : Variant(std::string_view(utf8)) {}
    /// Adds a reference.
    explicit Variant(IDispatch* object) noexcept;
    explicit Variant(const VARIANT& other);
    Variant(const Variant& other) : Variant(other.value_) {}
    Variant(Variant&& other) noexcept;
    Variant& operator=(Variant other) noexcept;
    ~Variant() { VariantClear(&value_); }

    static Variant Null() noexcept;
    /// What stands for an argument that is not given.
    static Variant Missing() noexcept;

    const VARIANT& Get() const noexcept { return value_; }
    VARIANT& Get() noexcept { return value_; }
    VARTYPE Type() const noexcept { return value_.vt; }
    /// Where a function puts the value that it hands out. Clears what is held.
    VARIANT* Receive() noexcept {
        VariantClear(&value_);
        return &value_;
    }
    /// Gives the value away.
    VARIANT Detach() noexcept;

    /// The object, when it holds one that offers IDispatch.
    Ref<IDispatch> Object() const noexcept;
    /// The value as the library keeps one, see ToValue.
    data::Value Value() const;
    std::string Text() const { return data::TextOf(Value()); }

private:
    VARIANT value_;
};

/// What VT_BYREF points to, else the value itself.
const VARIANT& Resolve(const VARIANT& value, VARIANT& place) noexcept;
bool IsMissing(const VARIANT& value) noexcept;

/// Empty and Null give Null; whole numbers std::int64_t. A decimal gives a whole number or an amount when it is one
/// exactly, else a double. Throws TypeMismatchError for objects, arrays and error codes, OverflowError for a whole
/// number beyond 63 bits.
data::Value ToValue(const VARIANT& value);
/// Null gives VT_NULL, a whole number VT_I8.
Variant FromValue(const data::Value& value);
/// In the column's own width: SmallInt VT_I2, Integer VT_I4, BigInt VT_I8.
Variant FromValue(const data::Value& value, data::FieldType type);

/// Italian, for Italy: how this library's texts have numbers and dates, and what its own calls say of theirs.
inline constexpr LCID kItalian = 0x0410;

/// As automation converts, halves rounded to even. Texts are Italian for every neutral `locale`, 0 among them; for
/// another one they are the system's business where it has such a service, else Italian too. Target types are the
/// numbers but VT_DECIMAL, VT_BOOL, VT_DATE, VT_BSTR, VT_DISPATCH, VT_UNKNOWN and VT_VARIANT (anything).
/// DISP_E_TYPEMISMATCH, DISP_E_OVERFLOW or DISP_E_BADVARTYPE; `target` is then untouched.
HRESULT Coerce(const VARIANT& source, VARTYPE type, Variant& target, LCID locale = kItalian) noexcept;

}  // namespace vlm::com
