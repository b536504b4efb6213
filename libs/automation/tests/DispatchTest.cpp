#include <gtest/gtest.h>

#include "automation/ErrorReport.h"
#include "automation/EventSource.h"
#include "automation/LateBound.h"
#include "support/Caught.h"
#include "support/ForeignObject.h"

namespace vlm::com {
namespace {

/// An object with a member of every kind.
class Sample final : public DispatchObject<IDispatch> {
public:
    std::string said;
    Ref<IDispatch> partner;

private:
    std::span<const Member> Members() const noexcept override {
        static constexpr std::array kMembers = {
            Method<&Sample::Say>("Say", 1, VT_BSTR, {{"What", VT_BSTR}, {"Times", VT_I4, true, 2}, {"Extra"}}),
            Get<&Sample::GetPartner>("Partner", 2, VT_DISPATCH),
            PutRef<&Sample::PutPartner>("Partner", 2, &data::ado::kConnectionId),
            Put<&Sample::PutLevel>("Level", 3, VT_I2),
            Method<&Sample::Fail>("Fail", 4, VT_BSTR),
        };
        return kMembers;
    }
    HRESULT STDMETHODCALLTYPE Say(BSTR what, std::int32_t times, const VARIANT& extra, BSTR* result) {
        said = ToUtf8(what) + " x " + std::to_string(times) + " " + Variant(extra).Text();
        *result = Bstr(said).Detach();
        return S_OK;
    }
    HRESULT STDMETHODCALLTYPE GetPartner(IDispatch** result) {
        *result = partner.Share();
        return S_OK;
    }
    HRESULT STDMETHODCALLTYPE PutPartner(IDispatch* value) {
        partner = Ref<IDispatch>(value);
        return S_OK;
    }
    HRESULT STDMETHODCALLTYPE PutLevel(SHORT value) {
        said = std::to_string(value);
        return S_OK;
    }
    HRESULT STDMETHODCALLTYPE Fail(BSTR*) {
        return Guarded("Prova", kNoId, [] { throw Error("non va", 94); });
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
    OLECHAR name[] = OLESTR("sAY");
    OLECHAR times[] = OLESTR("TIMES");
    OLECHAR what[] = OLESTR("what");
    OLECHAR none[] = OLESTR("Sa");
    LPOLESTR names[] = {name, times, what, none};
    DISPID ids[4] = {};
    EXPECT_EQ(sample->GetIDsOfNames(kNoId, names, 3, 0, ids), S_OK);
    EXPECT_EQ(ids[0], 1);
    EXPECT_EQ(ids[1], 1);
    EXPECT_EQ(ids[2], 0);
    EXPECT_EQ(sample->GetIDsOfNames(kNoId, names, 4, 0, ids), DISP_E_UNKNOWNNAME);
    EXPECT_EQ(ids[0], 1);
    EXPECT_EQ(ids[3], DISPID_UNKNOWN);
    EXPECT_EQ(sample->GetIDsOfNames(kNoId, names + 3, 1, 0, ids), DISP_E_UNKNOWNNAME);
    EXPECT_EQ(sample->GetIDsOfNames(kIdOf<IUnknown>, names, 1, 0, ids), DISP_E_UNKNOWNINTERFACE);
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

TEST(Dispatch, ObjectReferencesAreCheckedAndCounted) {
    int alive = 0;
    {
        const auto sample = Make<Sample>();
        const auto wanted = Make<test::MarkedObject>(data::ado::kConnectionId, alive);
        const auto other = Make<test::MarkedObject>(data::ado::kRecordsetId, alive);
        const LateBound late(sample);
        late.PutRef("Partner", wanted.Get());
        EXPECT_THROW(late.PutRef("partner", other.Get()), Error);
        EXPECT_EQ(late.Get("Partner").Object().Get(), wanted.Get());
        late.Put("Partner", Variant(static_cast<IDispatch*>(wanted.Get())));  // as languages without "Set" do
        EXPECT_EQ(test::ReferencesTo(wanted.Get()), 2u);
        EXPECT_EQ(test::ReferencesTo(other.Get()), 1u);
        late.PutRef("Partner", nullptr);
        EXPECT_EQ(test::ReferencesTo(wanted.Get()), 1u);
        EXPECT_EQ(late.Get("Partner").Type(), VT_DISPATCH);
    }
    EXPECT_EQ(alive, 0);
}

TEST(Dispatch, AFailureCarriesNumberSourceAndDescription) {
    const LateBound late(Make<Sample>());
    const Error error = test::Caught([&] { late.Call("Fail"); });
    EXPECT_STREQ(error.what(), "non va");
    EXPECT_EQ(error.Source(), "Prova");
    EXPECT_EQ(static_cast<std::uint32_t>(error.Number()), 0x800A005Eu);
    EXPECT_NE(test::CaughtText([&] { late.Call("Manca"); }).find("Manca"), std::string::npos);
    EXPECT_EQ(ResultOf(0), E_FAIL);
    EXPECT_EQ(ResultOf(DISP_E_TYPEMISMATCH), DISP_E_TYPEMISMATCH);
    EXPECT_EQ(ResultOf(70000), E_FAIL);
}

}  // namespace
}  // namespace vlm::com
