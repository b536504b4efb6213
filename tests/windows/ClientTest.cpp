#include "Client.h"
#include "ado/ConnectionObject.h"
#include "support/EmptyArchive.h"
#include "support/Listener.h"
#include "support/TempFolder.h"

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

/// What a call by the type library's description puts and gets is what a call by name does.
TEST(Client, TheRecordsPropertiesAreWhatTheTypeLibrarySays) {
    const auto record = Created<>("ASLPanoramicoLine");
    const LateBound late(record);
    com::Ref<ITypeInfo> info;
    ASSERT_EQ(record->GetTypeInfo(0, 0, info.Receive()), S_OK);
    const auto described = [&](DISPID id, WORD flags, Variant given = {}) {
        DISPID put = DISPID_PROPERTYPUT;
        DISPPARAMS parameters{};
        if (flags == DISPATCH_PROPERTYPUT) parameters = {&given.Get(), &put, 1, 1};
        Variant result;
        EXPECT_EQ(info->Invoke(record.Get(), id, flags, &parameters, result.Receive(), nullptr, nullptr), S_OK) << id;
        return result;
    };
    const auto ownValue = [](const com::Member& member) {
        const VARTYPE type = member.parameters[0].type;
        if (type == VT_DATE) return Variant(Date(40633));
        if (type == VT_BOOL) return Variant(true);
        return type == VT_I2 ? Variant(static_cast<std::int16_t>(-member.id))
                             : Variant("città € " + std::string(member.name));
    };
    std::vector<com::Member> puts;
    for (const com::Member& member : MembersOf<_ASLPanoramicoLine>()) {
        if (member.kind == DISPATCH_PROPERTYPUT) puts.push_back(member);
    }
    EXPECT_EQ(puts.size(), 15u);
    for (const com::Member& put : puts) described(put.id, DISPATCH_PROPERTYPUT, ownValue(put));
    for (const com::Member& put : puts) {  // all were put before: no two share a place
        const Variant got = described(put.id, DISPATCH_PROPERTYGET);
        EXPECT_EQ(got.Type(), put.parameters[0].type) << put.name;
        EXPECT_EQ(got.Text(), ownValue(put).Text()) << put.name;
        EXPECT_EQ(late.Get(put.name).Text(), got.Text()) << put.name;
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
