#include <cmath>
#include <cstring>
#include <gtest/gtest.h>
#include <limits>

#include "ado/AdoTypes.h"
#include "automation/Object.h"
#include "values/Error.h"

namespace vlm::com {
namespace {

static_assert(offsetof(DECIMAL, scale) == 2 && offsetof(DECIMAL, Lo64) == 8);  // where a VARIANT has its number

Variant OfType(int type, std::int64_t bits) {
    Variant value;
    value.Get().vt = static_cast<VARTYPE>(type);
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

/// What comes out, or why nothing does: then the result stays what it was.
std::string Coerced(const Variant& from, VARTYPE to) {
    Variant result("prima");
    const HRESULT done = Coerce(from.Get(), to, result);
    EXPECT_EQ(result.Type(), done == S_OK ? to : VARTYPE{VT_BSTR});
    if (done == S_OK) return result.Text();
    EXPECT_EQ(result.Text(), "prima");
    return done == DISP_E_OVERFLOW       ? "overflow"
           : done == DISP_E_TYPEMISMATCH ? "mismatch"
           : done == DISP_E_BADVARTYPE   ? "bad type"
                                         : "other";
}

TEST(Variant, CoercesAsAutomationDoes) {
    const Variant empty, null = Variant::Null(), missing = Variant::Missing(), noon(Date(40633.5));
    const Variant nan(std::numeric_limits<double>::quiet_NaN()), large(1e300), amount(Currency::FromUnits(125000));
    const struct {
        VARTYPE to;
        std::vector<Variant> from;
        const char* texts;
    } cases[] = {
        {VT_I2, {Variant(2.5), Variant(true), OfType(VT_UI1, 200), OfType(VT_I1, 200)}, "2|-1|200|-56|"},
        {VT_I2, {Variant(32767.5), Variant("99999"), Variant("abc")}, "overflow|overflow|mismatch|"},
        {VT_I4, {Variant(3.5), Variant("12,5"), empty}, "4|12|0|"},
        {VT_I4, {Variant(std::int64_t{1} << 31), missing}, "overflow|mismatch|"},
        {VT_I8, {Variant(-2.5), large}, "-2|overflow|"},
        {VT_R4, {large}, "overflow|"},
        {VT_R8, {Variant("1.234,50"), Variant(true), noon}, "1234,5|-1|40633,5|"},
        {VT_CY,
         {Variant("1.234,50"), Variant(1.03125), Variant(std::int64_t{900000000000000}), Variant(1e15)},
         "1234,5|1,0312|900000000000000|overflow|"},
        {VT_UI1, {Variant(true), Variant(-1.0)}, "255|overflow|"},
        {VT_BOOL,
         {Variant(std::int16_t{2}), Variant("Falso"), Variant("true"), Variant("0"), empty, Variant("forse")},
         "True|False|True|False|False|mismatch|"},
        {VT_DATE,
         {Variant("31/03/2011"), Variant("31/03/2011 8:30"), Variant("2011-03-31 08:30:00"), Variant(40633.5)},
         "31/03/2011|31/03/2011 08:30:00|31/03/2011 08:30:00|31/03/2011 12:00:00|"},
        {VT_DATE,
         {Variant("1 marzo 2011"), Variant("1/3/2011 10.30"), Variant("15-mar-50"), Variant("3/15/2011"),
          Variant("1/2/29")},
         "01/03/2011|01/03/2011 10:30:00|15/03/1950|15/03/2011|01/02/2029|"},
        {VT_DATE,
         {Variant(3e6), nan, Variant("31/02/2011"), Variant("1 ma 2011"), Variant("1/3/2011 10:60")},
         "overflow|overflow|mismatch|mismatch|mismatch|"},
        {VT_BSTR,
         {Variant(Date(40633)), Variant(12.5), amount, Variant(false), empty, DecimalOf(1250, 2, true), null},
         "31/03/2011|12,5|12,5|False||-12,5|mismatch|"},
        {VT_DISPATCH, {Variant("x"), empty}, "mismatch|mismatch|"},
        {VT_DECIMAL, {Variant("x")}, "bad type|"},
    };
    for (const auto& each : cases) {
        std::string texts;
        for (const Variant& from : each.from) texts += Coerced(from, each.to) + '|';
        EXPECT_EQ(texts, each.texts) << each.to;
    }
}

TEST(Variant, ReadsThroughReferences) {
    const auto at = [](VARTYPE type, auto* place) {
        return OfType(VT_BYREF | type, reinterpret_cast<std::intptr_t>(place));
    };
    SHORT small = -7;
    const Bstr text("città");
    BSTR place = text.Get();
    const Variant number = at(VT_I2, &small);
    Variant inner = at(VT_BSTR, &place);
    const Variant outer = at(VT_VARIANT, &inner.Get());
    Variant result;
    EXPECT_EQ(Coerce(number.Get(), VT_I4, result), S_OK);
    EXPECT_EQ(result.Get().lVal, -7);
    EXPECT_EQ(Coerce(outer.Get(), VT_BSTR, result), S_OK);
    EXPECT_EQ(result.Text(), "città");
    EXPECT_NE(result.Get().bstrVal, place);  // a copy of its own
}

TEST(Variant, DecimalsBecomeWhatTheyAreExactly) {
    EXPECT_EQ(DecimalOf(5000000000, 0, false).Value(), data::Value(5000000000));
    EXPECT_EQ(DecimalOf(12000, 3, true).Value(), data::Value(-12));
    EXPECT_EQ(DecimalOf(1250, 2, true).Value(), data::Value(Currency::FromUnits(-125000)));
    EXPECT_EQ(DecimalOf(123456, 4, false).Value(), data::Value(Currency::FromUnits(123456)));
    EXPECT_DOUBLE_EQ(std::get<double>(DecimalOf(12345678, 7, false).Value()), 1.2345678);
    EXPECT_DOUBLE_EQ(std::get<double>(DecimalOf(0, 0, false, 1).Value()), std::ldexp(1.0, 64));
    EXPECT_THROW(OfType(VT_UI8, -1).Value(), OverflowError);
    EXPECT_THROW(Variant::Missing().Value(), TypeMismatchError);
}

TEST(SafeArray, KeepsItsElements) {
    SAFEARRAYBOUND bounds[] = {{2, 0}, {3, 1}};
    Variant block;
    block.Get().parray = SafeArrayCreate(VT_VARIANT, 2, bounds);
    block.Get().vt = VT_ARRAY | VT_VARIANT;
    static_cast<VARIANT*>(block.Get().parray->pvData)[5] = Variant("cella 5").Detach();
    const Variant copy = block;
    block = Variant();

    SAFEARRAY* array = copy.Get().parray;
    LONG low = 0;
    LONG high = 0;
    ASSERT_TRUE(SafeArrayGetLBound(array, 2, &low) == S_OK && SafeArrayGetUBound(array, 2, &high) == S_OK);
    EXPECT_EQ(std::pair(low, high), (std::pair<LONG, LONG>(1, 3)));
    EXPECT_EQ(SafeArrayGetLBound(array, 3, &low), DISP_E_BADINDEX);
    EXPECT_EQ(Variant(static_cast<const VARIANT*>(array->pvData)[5]).Text(), "cella 5");
}

/// An object with a member of every kind.
class Sample final : public DispatchObject<IDispatch> {
public:
    std::string said;

private:
    std::span<const Member> Members() const noexcept override {
        static constexpr std::array kMembers = {
            Method<&Sample::Say>("Say", 1, VT_BSTR, {{"What", VT_BSTR}, {"Times", VT_I4, true, 2}, {"Extra"}}),
            PutRef<&Sample::PutPartner>("Partner", 2, &data::ado::kConnectionId),
            Put<&Sample::PutLevel>("Level", 3, VT_I2),
        };
        return kMembers;
    }
    HRESULT STDMETHODCALLTYPE Say(BSTR what, std::int32_t times, const VARIANT& extra, BSTR* result) {
        said = ToUtf8(what) + " x " + std::to_string(times) + " " + Variant(extra).Text();
        *result = Bstr(said).Detach();
        return S_OK;
    }
    HRESULT STDMETHODCALLTYPE PutPartner(IDispatch*) { return S_OK; }
    HRESULT STDMETHODCALLTYPE PutLevel(SHORT value) {
        said = std::to_string(value);
        return S_OK;
    }
};

/// A raw call: the arguments last to first, the first ones named.
struct RawCall {
    std::vector<Variant> given;
    std::vector<DISPID> named;
    UINT fault = 99;
    Variant result;

    HRESULT operator()(IDispatch& object, DISPID id, WORD flags) {
        std::vector<VARIANT> values;
        for (const Variant& value : given) values.push_back(value.Get());
        DISPPARAMS parameters{};
        parameters.rgvarg = values.data();
        parameters.cArgs = static_cast<UINT>(values.size());
        parameters.rgdispidNamedArgs = named.data();
        parameters.cNamedArgs = static_cast<UINT>(named.size());
        return object.Invoke(id, kNoId, 0, flags, &parameters, result.Receive(), nullptr, &fault);
    }
};

TEST(Dispatch, FindsMembersAndParametersByName) {
    const auto sample = Make<Sample>();
    OLECHAR name[] = OLESTR("sAY"), times[] = OLESTR("TIMES"), what[] = OLESTR("what"), none[] = OLESTR("Sa");
    LPOLESTR names[] = {name, times, what, none};
    std::array<DISPID, 4> ids{};
    EXPECT_EQ(sample->GetIDsOfNames(kNoId, names, 3, 0, ids.data()), S_OK);
    EXPECT_EQ(ids, (std::array<DISPID, 4>{1, 1, 0, 0}));
    EXPECT_EQ(sample->GetIDsOfNames(kNoId, names, 4, 0, ids.data()), DISP_E_UNKNOWNNAME);
    EXPECT_EQ(ids, (std::array<DISPID, 4>{1, 1, 0, DISPID_UNKNOWN}));
    EXPECT_EQ(sample->GetIDsOfNames(kNoId, names + 3, 1, 0, ids.data()), DISP_E_UNKNOWNNAME);
    EXPECT_EQ(sample->GetIDsOfNames(kIdOf<IUnknown>, names, 1, 0, ids.data()), DISP_E_UNKNOWNINTERFACE);
}

TEST(Dispatch, BringsArgumentsIntoOrderAndType) {
    const auto sample = Make<Sample>();
    const Variant missing = Variant::Missing();
    const struct {
        std::vector<Variant> given;
        std::vector<DISPID> named;
        HRESULT result;
        UINT fault;
        const char* said;
    } cases[] = {
        {{Variant(true), Variant(3.0), Variant("ciao")}, {}, S_OK, 99, "ciao x 3 True"},
        {{Variant(1.5), missing, Variant(std::int32_t{7})}, {}, S_OK, 99, "7 x 2 1,5"},
        {{Variant("e"), Variant("ciao")}, {2}, S_OK, 99, "ciao x 2 e"},
        {{Variant("e"), Variant("5"), Variant("a")}, {2, 1, 0}, S_OK, 99, "a x 5 e"},
        {{Variant("e"), missing}, {2}, DISP_E_PARAMNOTOPTIONAL, 1, ""},
        {{Variant("ciao")}, {}, DISP_E_BADPARAMCOUNT, 99, ""},
        {{missing, missing, missing, missing}, {}, DISP_E_BADPARAMCOUNT, 99, ""},
        {{Variant("e"), Variant("molte"), Variant("ciao")}, {}, DISP_E_TYPEMISMATCH, 1, ""},
        {{Variant("e"), Variant(1e10), Variant("ciao")}, {}, DISP_E_OVERFLOW, 1, ""},
        {{Variant("e"), Variant("x"), Variant("ciao")}, {7}, DISP_E_PARAMNOTFOUND, 0, ""},
        {{Variant("e"), Variant("x"), Variant("ciao")}, {0}, DISP_E_PARAMNOTFOUND, 0, ""},
    };
    int at = 0;
    for (const auto& each : cases) {
        sample->said.clear();
        RawCall call{each.given, each.named, 99, {}};
        EXPECT_EQ(call(*sample, 1, DISPATCH_METHOD), each.result) << at;
        EXPECT_EQ(call.fault, each.fault) << at;
        EXPECT_EQ(sample->said + call.result.Text(), std::string(each.said) + each.said) << at++;
    }
}

TEST(Dispatch, TellsTheKindsOfCallsApart) {
    const auto sample = Make<Sample>();
    RawCall none;
    EXPECT_EQ(none(*sample, 77, DISPATCH_METHOD), DISP_E_MEMBERNOTFOUND);
    EXPECT_EQ(none(*sample, 1, DISPATCH_PROPERTYGET), DISP_E_MEMBERNOTFOUND);
    EXPECT_EQ(none(*sample, 3, DISPATCH_PROPERTYGET), DISP_E_MEMBERNOTFOUND);
    RawCall number{{Variant(std::int32_t{1})}, {DISPID_PROPERTYPUT}, 99, {}};
    EXPECT_EQ(number(*sample, 2, DISPATCH_PROPERTYPUT), DISP_E_MEMBERNOTFOUND);
    EXPECT_EQ(number(*sample, 2, DISPATCH_PROPERTYPUTREF), DISP_E_TYPEMISMATCH);
    EXPECT_EQ(number(*sample, 3, DISPATCH_PROPERTYPUT), S_OK);
    EXPECT_EQ(sample->said, "1");
    EXPECT_EQ(none(*sample, 3, DISPATCH_PROPERTYPUT), DISP_E_BADPARAMCOUNT);
}

}  // namespace
}  // namespace vlm::com
