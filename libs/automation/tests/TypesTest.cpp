#include <cmath>
#include <cstring>
#include <gtest/gtest.h>
#include <limits>

#include "automation/Variant.h"
#include "values/Error.h"

namespace vlm::com {
namespace {

static_assert(offsetof(DECIMAL, scale) == 2 && offsetof(DECIMAL, Lo64) == 8);  // where a VARIANT has its number

Variant OfType(VARTYPE type, std::int64_t bits) {
    Variant value;
    value.Get().vt = type;
    value.Get().llVal = bits;
    return value;
}

Variant DecimalOf(std::uint64_t low, int scale, bool negative, std::uint32_t high = 0) {
    Variant value;
    DECIMAL decimal{};
    decimal.Lo64 = low;
    decimal.Hi32 = high;
    decimal.scale = static_cast<BYTE>(scale);
    decimal.sign = negative ? 0x80 : 0;
    value.Get().decVal = decimal;
    value.Get().vt = VT_DECIMAL;
    return value;
}

TEST(Bstr, StandsAsTheSystemKeepsIt) {
    const Bstr text("Nicolò €𝄞");
    const OLECHAR expected[] = OLESTR("Nicolò €𝄞");
    ASSERT_EQ(SysStringLen(text.Get()), 10u);
    std::uint32_t bytes = 0;
    std::memcpy(&bytes, reinterpret_cast<const char*>(text.Get()) - 4, 4);
    EXPECT_EQ(bytes, 20u);
    EXPECT_EQ(std::memcmp(text.Get(), expected, sizeof expected), 0);  // with the zero at the end
    EXPECT_EQ(text.Text(), "Nicolò €𝄞");

    const Bstr inside(std::string_view("a\0b", 3));
    EXPECT_EQ(inside.Text(), std::string("a\0b", 3));
    EXPECT_EQ(SysStringLen(nullptr), 0u);
    EXPECT_EQ(ToUtf8(BSTR{}), "");
    EXPECT_EQ(SysAllocString(nullptr), nullptr);
    const OLECHAR broken[] = {0xD834, 'x', 0xDD1E, 0};
    EXPECT_EQ(ToUtf8(WideView(broken, 3)), "\uFFFDx\uFFFD");
    EXPECT_EQ(Bstr("a\xFFz").Text(), "a\uFFFDz");
}

TEST(Variant, CoercesAsAutomationDoes) {
    const Variant empty;
    const struct {
        Variant from;
        VARTYPE to;
        const char* text;  // of the result, which stays what it was when nothing comes out
        HRESULT done = S_OK;
    } cases[] = {
        {Variant(2.5), VT_I2, "2"},
        {Variant(3.5), VT_I4, "4"},
        {Variant(-2.5), VT_I8, "-2"},
        {Variant("12,5"), VT_I4, "12"},
        {Variant("1.234,50"), VT_R8, "1234,5"},
        {Variant("1.234,50"), VT_CY, "1234,5"},
        {Variant(1.03125), VT_CY, "1,0312"},
        {Variant(std::int64_t{900000000000000}), VT_CY, "900000000000000"},
        {Variant(true), VT_I2, "-1"},
        {Variant(true), VT_UI1, "255"},
        {Variant(true), VT_R8, "-1"},
        {Variant(std::int16_t{2}), VT_BOOL, "True"},
        {Variant("Falso"), VT_BOOL, "False"},
        {Variant("true"), VT_BOOL, "True"},
        {Variant("0"), VT_BOOL, "False"},
        {Variant("31/03/2011"), VT_DATE, "31/03/2011"},
        {Variant("31/03/2011 8:30"), VT_DATE, "31/03/2011 08:30:00"},
        {Variant("2011-03-31 08:30:00"), VT_DATE, "31/03/2011 08:30:00"},
        {Variant(40633.5), VT_DATE, "31/03/2011 12:00:00"},
        {Variant(Date(40633)), VT_BSTR, "31/03/2011"},
        {Variant(Date(40633.25)), VT_R8, "40633,25"},
        {Variant(12.5), VT_BSTR, "12,5"},
        {Variant(Currency::FromUnits(125000)), VT_BSTR, "12,5"},
        {Variant(false), VT_BSTR, "False"},
        {empty, VT_BSTR, ""},
        {empty, VT_I4, "0"},
        {empty, VT_BOOL, "False"},
        {DecimalOf(1250, 2, true), VT_BSTR, "-12,5"},
        {OfType(VT_UI1, 200), VT_I2, "200"},
        {OfType(VT_I1, 200), VT_I2, "-56"},
        {Variant(32767.5), VT_I2, "prima", DISP_E_OVERFLOW},
        {Variant(-1.0), VT_UI1, "prima", DISP_E_OVERFLOW},
        {Variant(std::int64_t{1} << 31), VT_I4, "prima", DISP_E_OVERFLOW},
        {Variant(1e300), VT_I8, "prima", DISP_E_OVERFLOW},
        {Variant(1e300), VT_R4, "prima", DISP_E_OVERFLOW},
        {Variant(1e15), VT_CY, "prima", DISP_E_OVERFLOW},
        {Variant(3e6), VT_DATE, "prima", DISP_E_OVERFLOW},
        {Variant(std::numeric_limits<double>::quiet_NaN()), VT_DATE, "prima", DISP_E_OVERFLOW},
        {Variant("99999"), VT_I2, "prima", DISP_E_OVERFLOW},
        {Variant("abc"), VT_I2, "prima", DISP_E_TYPEMISMATCH},
        {Variant("31/02/2011"), VT_DATE, "prima", DISP_E_TYPEMISMATCH},
        {Variant("forse"), VT_BOOL, "prima", DISP_E_TYPEMISMATCH},
        {Variant::Null(), VT_BSTR, "prima", DISP_E_TYPEMISMATCH},
        {Variant::Missing(), VT_I4, "prima", DISP_E_TYPEMISMATCH},
        {Variant("x"), VT_DISPATCH, "prima", DISP_E_TYPEMISMATCH},
        {Variant(), VT_DISPATCH, "prima", DISP_E_TYPEMISMATCH},
        {Variant("x"), VT_DECIMAL, "prima", DISP_E_BADVARTYPE},
    };
    int at = 0;
    for (const auto& each : cases) {
        Variant result("prima");
        EXPECT_EQ(Coerce(each.from.Get(), each.to, result), each.done) << at;
        EXPECT_EQ(result.Type(), each.done == S_OK ? each.to : VARTYPE{VT_BSTR}) << at;
        EXPECT_EQ(result.Text(), each.text) << at++;
    }
}

TEST(Variant, ReadsThroughReferences) {
    SHORT small = -7;
    Variant number;
    number.Get().vt = VT_BYREF | VT_I2;
    number.Get().piVal = &small;
    Bstr text("città");
    BSTR place = text.Get();
    Variant outer;
    Variant inner;
    inner.Get().vt = VT_BYREF | VT_BSTR;
    inner.Get().pbstrVal = &place;
    outer.Get().vt = VT_BYREF | VT_VARIANT;
    outer.Get().pvarVal = &inner.Get();
    Variant result;
    EXPECT_EQ(Coerce(number.Get(), VT_I4, result), S_OK);
    EXPECT_EQ(result.Get().lVal, -7);
    EXPECT_EQ(Coerce(outer.Get(), VT_BSTR, result), S_OK);
    EXPECT_EQ(result.Text(), "città");
    EXPECT_NE(result.Get().bstrVal, place);  // a copy of its own
}

TEST(Variant, DecimalsBecomeWhatTheyAreExactly) {
    const auto whole = [](const Variant& value) { return std::get<std::int64_t>(value.Value()); };
    const auto amount = [](const Variant& value) { return std::get<Currency>(value.Value()).Units(); };
    EXPECT_EQ(whole(DecimalOf(5000000000, 0, false)), 5000000000);
    EXPECT_EQ(whole(DecimalOf(12000, 3, true)), -12);
    EXPECT_EQ(amount(DecimalOf(1250, 2, true)), -125000);
    EXPECT_EQ(amount(DecimalOf(123456, 4, false)), 123456);
    EXPECT_DOUBLE_EQ(std::get<double>(DecimalOf(12345678, 7, false).Value()), 1.2345678);
    EXPECT_DOUBLE_EQ(std::get<double>(DecimalOf(0, 0, false, 1).Value()), std::ldexp(1.0, 64));
    EXPECT_THROW(OfType(VT_UI8, -1).Value(), OverflowError);
    EXPECT_THROW(Variant::Missing().Value(), TypeMismatchError);
}

TEST(SafeArray, KeepsItsElements) {
    SAFEARRAYBOUND bounds[2]{};
    bounds[0].cElements = 2;
    bounds[1].cElements = 3;
    bounds[1].lLbound = 1;
    Variant block;
    block.Get().parray = SafeArrayCreate(VT_VARIANT, 2, bounds);
    block.Get().vt = VT_ARRAY | VT_VARIANT;
    auto* cells = static_cast<VARIANT*>(block.Get().parray->pvData);
    for (int i = 0; i < 6; ++i) cells[i] = Variant("cella " + std::to_string(i)).Detach();
    const Variant copy = block;
    block = Variant();

    SAFEARRAY* array = copy.Get().parray;
    LONG low = 0;
    LONG high = 0;
    VARTYPE type = 0;
    EXPECT_EQ(SafeArrayGetDim(array), 2u);
    EXPECT_EQ(SafeArrayGetLBound(array, 2, &low), S_OK);
    EXPECT_EQ(SafeArrayGetUBound(array, 2, &high), S_OK);
    EXPECT_EQ(SafeArrayGetVartype(array, &type), S_OK);
    EXPECT_EQ(low, 1);
    EXPECT_EQ(high, 3);
    EXPECT_EQ(type, VT_VARIANT);
    EXPECT_EQ(array->rgsabound[1].cElements, 2u);
    EXPECT_EQ(SafeArrayGetLBound(array, 3, &low), DISP_E_BADINDEX);
    EXPECT_EQ(Variant(static_cast<const VARIANT*>(array->pvData)[5]).Text(), "cella 5");
}

}  // namespace
}  // namespace vlm::com
