#include <functional>

#include "platform/automation/ErrorReport.h"
#include "platform/data/ado/ConnectionObject.h"
#include "server/Listener.h"
#include "support/EmptyArchive.h"
#include "support/TempFolder.h"
#include "windows/Client.h"

namespace vlm::server {
namespace {

using com::LateBound;
using com::Variant;
using test::Created;

constexpr const wchar_t* kModule = L"VlmASLServicesLib.dll";

TEST(Client, EveryClassIsCreatedByItsName) {
    for (const test::KnownClass& known : test::KnownClasses()) {
        const auto object = Created<>(known.name);
        ASSERT_TRUE(object) << known.name;
        EXPECT_TRUE(com::Query<IDispatch>(object.Get(), known.interfaceId)) << known.name;
        UINT count = 0;
        EXPECT_EQ(object->GetTypeInfoCount(&count), S_OK);
        EXPECT_EQ(count, 1u);
        com::Ref<ITypeInfo> info;
        ASSERT_EQ(object->GetTypeInfo(0, 0, info.Receive()), S_OK) << known.name;
        TYPEATTR* attributes = nullptr;
        ASSERT_EQ(info->GetTypeAttr(&attributes), S_OK);
        EXPECT_TRUE(com::Same(attributes->guid, known.interfaceId)) << known.name;
        info->ReleaseTypeAttr(attributes);
        EXPECT_EQ(object->GetTypeInfo(1, 0, info.Receive()), DISP_E_BADINDEX);
        EXPECT_FALSE(info);
    }
}

/// The three ways to a property: by name, through the table of functions, and by what the type library says of it.
struct Ways {
    com::Ref<_ASLPanoramicoLine> table = Created<_ASLPanoramicoLine>("ASLPanoramicoLine");
    LateBound late{com::Ref<IDispatch>(table.Get())};
    com::Ref<ITypeInfo> info;

    Ways() { EXPECT_EQ(table->GetTypeInfo(0, 0, info.Receive()), S_OK); }

    Variant Described(DISPID id, WORD flags, Variant given = {}) {
        DISPID put = DISPID_PROPERTYPUT;
        DISPPARAMS parameters{};
        if ((flags & DISPATCH_PROPERTYGET) == 0) parameters = {&given.Get(), &put, 1, 1};
        Variant result;
        EXPECT_EQ(info->Invoke(table.Get(), id, flags, &parameters, result.Receive(), nullptr, nullptr), S_OK) << id;
        return result;
    }
};

TEST(Client, TheRecordsTextsGoThroughEveryWay) {
    using I = _ASLPanoramicoLine;
    const struct {
        const char* name;
        HRESULT (STDMETHODCALLTYPE I::*get)(BSTR*);
        HRESULT (STDMETHODCALLTYPE I::*put)(BSTR);
        DISPID id;
    } fields[] = {
        {"CodMed", &I::get_CodMed, &I::put_CodMed, 1},
        {"AssCF", &I::get_AssCF, &I::put_AssCF, 2},
        {"CodFarmaco1", &I::get_CodFarmaco1, &I::put_CodFarmaco1, 4},
        {"ICD9Farmaco1", &I::get_ICD9Farmaco1, &I::put_ICD9Farmaco1, 5},
        {"SuggFarmaco1", &I::get_SuggFarmaco1, &I::put_SuggFarmaco1, 6},
        {"CodFarmaco2", &I::get_CodFarmaco2, &I::put_CodFarmaco2, 8},
        {"ICD9Farmaco2", &I::get_ICD9Farmaco2, &I::put_ICD9Farmaco2, 9},
        {"SuggFarmaco2", &I::get_SuggFarmaco2, &I::put_SuggFarmaco2, 10},
        {"TipoRecord", &I::get_TipoRecord, &I::put_TipoRecord, 12},
        {"ICD92Farmaco1", &I::get_ICD92Farmaco1, &I::put_ICD92Farmaco1, 13},
        {"ICD92Farmaco2", &I::get_ICD92Farmaco2, &I::put_ICD92Farmaco2, 14},
    };
    Ways ways;
    const std::string text = "città € ";
    const std::function<void(std::size_t)> puts[] = {
        [&](std::size_t i) { ways.late.Put(fields[i].name, Variant(text + fields[i].name)); },
        [&](std::size_t i) { ((*ways.table).*fields[i].put)(com::Bstr(text + fields[i].name).Get()); },
        [&](std::size_t i) { ways.Described(fields[i].id, DISPATCH_PROPERTYPUT, Variant(text + fields[i].name)); },
    };
    for (const auto& put : puts) {
        ways = Ways();
        for (std::size_t i = 0; i < std::size(fields); ++i) put(i);  // all before any is read: no two share a place
        for (const auto& field : fields) {
            com::Bstr direct;
            EXPECT_EQ(((*ways.table).*field.get)(direct.Receive()), S_OK);
            EXPECT_EQ(direct.Text(), text + field.name);
            EXPECT_EQ(ways.late.Get(field.name).Text(), text + field.name);
            EXPECT_EQ(ways.Described(field.id, DISPATCH_PROPERTYGET).Text(), text + field.name);
        }
    }
}

TEST(Client, TheRecordsOtherPropertiesGoThroughEveryWay) {
    Ways ways;
    ways.late.Put("DataRicetta", Variant(Date(40633)));
    DATE date = 0;
    EXPECT_EQ(ways.table->get_DataRicetta(&date), S_OK);
    EXPECT_EQ(date, 40633);
    EXPECT_EQ(ways.table->put_DataRicetta(40634), S_OK);
    EXPECT_EQ(ways.late.Get("DataRicetta").Type(), VT_DATE);
    EXPECT_EQ(ways.Described(3, DISPATCH_PROPERTYGET).Text(), "01/04/2011");
    ways.late.Put("QFarmaco1", Variant("7"));
    EXPECT_EQ(ways.table->put_QFarmaco2(-3), S_OK);
    SHORT number = 0;
    EXPECT_EQ(ways.table->get_QFarmaco1(&number), S_OK);
    EXPECT_EQ(number, 7);
    EXPECT_EQ(ways.late.Get("qfarmaco2").Text(), "-3");
    EXPECT_EQ(ways.Described(11, DISPATCH_PROPERTYGET).Type(), VT_I2);
    ways.Described(20, DISPATCH_PROPERTYPUT, Variant(true));
    VARIANT_BOOL truth = VARIANT_FALSE;
    EXPECT_EQ(ways.table->get_PrescrivibileSSN(&truth), S_OK);
    EXPECT_EQ(truth, VARIANT_TRUE);
    EXPECT_EQ(ways.late.Get("PrescrivibileSSN").Text(), "True");
    EXPECT_EQ(SysStringLen(ways.late.Call("GetFormattedLine").Get().bstrVal), 76u);
    EXPECT_EQ(ways.late.Call("GetErrors").Text(), "");
    int alive = 0;
    const struct {
        const char* name;
        GUID id;
    } references[] = {{"Rs", data::ado::kRecordsetId}, {"Connection", data::ado::kConnectionId}};
    for (const auto& each : references) {
        const auto object = com::Make<test::MarkedObject>(each.id, alive);
        ways.late.PutRef(each.name, object.Get());
        EXPECT_EQ(ways.late.Get(each.name).Object().Get(), object.Get());
        EXPECT_THROW(ways.late.PutRef(each.name, com::Make<test::MarkedObject>(kRightsId, alive).Get()), Error);
        ways.late.PutRef(each.name, nullptr);
        EXPECT_EQ(test::ReferencesTo(object.Get()), 1u) << each.name;
    }
    EXPECT_EQ(alive, 0);
}

TEST(Client, AFailureIsToldWithCodeSourceAndDescription) {
    const auto record = Created<_ASLPanoramicoLine>("ASLPanoramicoLine");
    const auto support = com::Query<ISupportErrorInfo>(record.Get());
    ASSERT_TRUE(support);
    EXPECT_EQ(support->InterfaceSupportsErrorInfo(_ASLPanoramicoLine::kId), S_OK);
    VARIANT_BOOL truth = VARIANT_TRUE;
    const HRESULT code = record->ReadData(&truth);  // there are no rows
    EXPECT_EQ(static_cast<std::uint32_t>(code), 0x800A005Bu);
    const Error direct = com::TakeError(code, "?");
    EXPECT_EQ(direct.Source(), "VlmASLServicesLib");
    EXPECT_NE(std::string(direct.what()), "");
    try {
        LateBound(com::Ref<IDispatch>(record)).Call("ReadData");
        ADD_FAILURE();
    } catch (const Error& late) {
        EXPECT_EQ(static_cast<HRESULT>(late.Number()), code);
        EXPECT_EQ(late.Source(), direct.Source());
        EXPECT_STREQ(late.what(), direct.what());
    }
}

/// A list of 25 lines tells of the tenth and of the twentieth. The connection is somebody else's, and let go.
void ReadTwentyFiveLines(const LateBound& component) {
    test::Foreign world;
    {
        const auto connection = com::Make<test::ForeignObject>(
            com::Make<data::ado::ConnectionObject>(std::make_shared<test::EmptyArchive>()), world);
        component.PutRef("Connection", connection.Get());
        EXPECT_EQ(component.Get("Connection").Object().Get(), connection.Get());
        const test::TempFolder folder;
        test::WriteBytes(folder / "elenco è.txt", std::string(25, '\n'));
        const LateBound elements = component.ObjectOf("GetElementList", {Variant(folder / "elenco è.txt")});
        EXPECT_EQ(elements.Get("EOF").Text(), "True");
        component.PutRef("Connection", nullptr);
        EXPECT_EQ(test::ReferencesTo(connection.Get()), 1u);
    }
    EXPECT_EQ(world.alive, 0);
}

TEST(Client, EventsAreOfferedHeardAndTheirListenersCounted) {
    int alive = 0;
    {
        const auto component = Created<IUnknown>("ASLImportPatient");
        const auto classInfo = com::Query<IProvideClassInfo2>(component.Get());
        ASSERT_TRUE(classInfo && com::Query<IProvideClassInfo>(component.Get()));
        GUID events{};
        EXPECT_EQ(classInfo->GetGUID(GUIDKIND_DEFAULT_SOURCE_DISP_IID, &events), S_OK);
        EXPECT_TRUE(com::Same(events, k__ASLImportPatientId));
        EXPECT_EQ(classInfo->GetGUID(0, &events), E_INVALIDARG);
        com::Ref<ITypeInfo> info;
        ASSERT_EQ(classInfo->GetClassInfo(info.Receive()), S_OK);
        TYPEATTR* attributes = nullptr;
        ASSERT_EQ(info->GetTypeAttr(&attributes), S_OK);
        EXPECT_TRUE(com::Same(attributes->guid, kASLImportPatientClass));
        info->ReleaseTypeAttr(attributes);

        const auto container = com::Query<IConnectionPointContainer>(component.Get());
        com::Ref<IConnectionPoint> point;
        ASSERT_EQ(container->FindConnectionPoint(k__ASLImportPatientId, point.Receive()), S_OK);
        const auto listener = com::Make<test::Listener>(alive);
        DWORD cookie = 0;
        ASSERT_EQ(point->Advise(listener.Get(), &cookie), S_OK);
        EXPECT_EQ(test::ReferencesTo(listener.Get()), 2u);
        ReadTwentyFiveLines(LateBound(com::Query<IDispatch>(component.Get())));
        EXPECT_EQ(listener->heard, (std::vector<std::int32_t>{40, 80}));
        EXPECT_EQ(point->Unadvise(cookie), S_OK);
        EXPECT_EQ(test::ReferencesTo(listener.Get()), 1u);
        ASSERT_EQ(point->Advise(listener.Get(), &cookie), S_OK);  // a client that ends without leaving
    }
    EXPECT_EQ(alive, 0);
}

TEST(Client, TheLibraryGoesWhenNobodyNeedsIt) {
    CoFreeUnusedLibrariesEx(0, 0);
    EXPECT_EQ(GetModuleHandleW(kModule), nullptr);
    for (int round = 0; round < 3; ++round) {
        auto object = Created<>("ExportProgetti");
        const HMODULE module = GetModuleHandleW(kModule);
        ASSERT_NE(module, nullptr);
        const auto canUnload = reinterpret_cast<HRESULT(STDAPICALLTYPE*)()>(
            reinterpret_cast<void*>(GetProcAddress(module, "DllCanUnloadNow")));
        ASSERT_NE(canUnload, nullptr);
        EXPECT_EQ(canUnload(), S_FALSE);
        CoFreeUnusedLibrariesEx(0, 0);
        ASSERT_NE(GetModuleHandleW(kModule), nullptr);
        object.Reset();
        EXPECT_EQ(canUnload(), S_OK);
        CoFreeUnusedLibrariesEx(0, 0);
        EXPECT_EQ(GetModuleHandleW(kModule), nullptr);
    }
}

/// Runs alone, after the library has been taken out of the registry.
TEST(Unregistered, NothingOfTheLibraryIsLeft) {
    for (const test::KnownClass& known : test::KnownClasses()) {
        void* object = nullptr;
        CLSID classId{};
        const com::WideText name = com::ToWide(std::string(kLibraryName) + "." + known.name);
        EXPECT_EQ(CLSIDFromProgID(name.c_str(), &classId), CO_E_CLASSSTRING) << known.name;
        EXPECT_EQ(CoCreateInstance(known.classId, nullptr, CLSCTX_INPROC_SERVER, known.interfaceId, &object),
                  REGDB_E_CLASSNOTREG)
            << known.name;
    }
    EXPECT_FALSE(test::RegisteredTypeLibrary());
}

}  // namespace
}  // namespace vlm::server
