#include "ASLImportPatientFacade.h"
#include "ServerFixture.h"
#include "ado/HostRecordset.h"
#include "ado/RecordsetObject.h"
#include "support/EmptyArchive.h"
#include "support/PrescriptionRow.h"
#include "support/TempFolder.h"

namespace vlm::server {
namespace {

using com::LateBound;
using com::Variant;
using test::Create;

using RecordTest = test::ServerTest;

/// One prescription, as its row set crosses the border.
com::Ref<IDispatch> Prescription(bool withQuantity = true) {
    auto row = test::PrescriptionRow();
    if (!withQuantity) row->SetValue("Quantita_1", {});
    row->Update();
    return data::ado::MakeRecordsetObject(std::move(row));
}

TEST_F(RecordTest, ReadsTheHostsRowAndLooksUpOnItsOwnConnection) {
    const std::string lookup = "SELECT CodificaCompleta FROM Aldra..Patologia WHERE IDPatologia = ";
    database->tables[lookup + "1"] = {{"CodificaCompleta"}, {{std::string("25000")}}};
    database->tables[lookup + "2"] = {{"CodificaCompleta"}, {{std::string("4019")}}};
    const std::string expected = "19010NCLMGR70E41G273K15032011023993013125000S02028519015 4019 S12F4019 25000";
    for (const bool foreign : {false, true}) {
        com::Ref<IDispatch> rows = Prescription();
        if (foreign) rows = com::Make<test::ForeignObject>(rows, world);
        {
            const LateBound record(Create(kASLPanoramicoLineClass));
            const com::Ref<IDispatch> connection = ForeignConnection();
            record.PutRef("Rs", rows.Get());
            record.PutRef("Connection", connection.Get());
            world.asked.clear();
            EXPECT_EQ(record.Call("ReadData").Get().boolVal, VARIANT_FALSE);
            EXPECT_EQ(record.Call("GetFormattedLine").Text(), expected);
            EXPECT_EQ(record.Get("QFarmaco2").Text(), "12");
            EXPECT_EQ(std::count(world.asked.begin(), world.asked.end(), "MoveNext"), 0);
            EXPECT_EQ(record.Get("Rs").Object().Get(), rows.Get());
            EXPECT_EQ(test::ReferencesTo(connection.Get()), 3u);  // ours, the kept one, the one called by
        }
        EXPECT_EQ(test::ReferencesTo(rows.Get()), 1u);
    }
}

TEST_F(RecordTest, AFailedReadingTellsAndKeepsNothing) {
    const com::Ref<IDispatch> rows = com::Make<test::ForeignObject>(Prescription(false), world);
    const LateBound record(Create(kASLPanoramicoLineClass));
    EXPECT_EQ(static_cast<std::uint32_t>(CodeOf([&] { record.Call("ReadData"); })), 0x800A005Bu);  // no object
    record.PutRef("Rs", rows.Get());
    record.PutRef("Connection", nullptr);
    record.Put("QFarmaco1", Variant("7"));
    EXPECT_THROW(record.Put("QFarmaco1", Variant(40000.0)), Error);
    EXPECT_THROW(record.Put("DataRicetta", Variant("31/02/2011")), Error);
    EXPECT_EQ(record.Get("QFarmaco1").Text(), "7");
    EXPECT_THROW(record.Call("ReadData"), Error);
    record.PutRef("Rs", nullptr);
    EXPECT_EQ(test::ReferencesTo(rows.Get()), 1u);
}

TEST(ImportEvents, ReachEveryListenerThatIsThere) {
    int alive = 0;
    {
        const auto component = com::Make<ASLImportPatientFacade>();
        const auto container = com::Query<IConnectionPointContainer>(component->AsUnknown());
        com::Ref<IConnectionPoint> point;
        EXPECT_EQ(container->FindConnectionPoint(kRightsId, point.Receive()), CONNECT_E_NOCONNECTION);
        ASSERT_EQ(container->FindConnectionPoint(k__ASLImportPatientId, point.Receive()), S_OK);
        com::Ref<test::NotingObject> listeners[3];
        DWORD cookies[3] = {};
        for (int i = 0; i < 3; ++i) {
            listeners[i] = com::Make<test::NotingObject>(k__ASLImportPatientId, alive);
            EXPECT_EQ(point->Advise(listeners[i].Get(), &cookies[i]), S_OK);
        }
        const auto& [deaf, leaving, staying] = listeners;
        deaf->answer = E_FAIL;
        EXPECT_EQ(point->Advise(point.Get(), &cookies[0]), CONNECT_E_CANNOTCONNECT);
        cookies[0] = 1;
        leaving->onNumber = [&] { EXPECT_EQ(point->Unadvise(cookies[1]), S_OK); };
        // A list of 25 lines tells of the tenth and of the twentieth.
        const auto connection = com::Make<data::ado::ConnectionObject>(std::make_shared<test::EmptyArchive>());
        EXPECT_EQ(component->putref_Connection(connection.Get()), S_OK);
        const test::TempFolder folder;
        test::WriteBytes(folder / "elenco.txt", std::string(25, '\n'));
        com::Ref<IDispatch> elements;
        EXPECT_EQ(component->GetElementList(com::Bstr(folder / "elenco.txt").Get(), elements.Receive()), S_OK);
        EXPECT_EQ(component->putref_Connection(nullptr), S_OK);
        EXPECT_EQ(staying->calls, "40 80 ");
        EXPECT_EQ(leaving->calls, "40 ");
        EXPECT_EQ(point->Unadvise(cookies[1]), CONNECT_E_NOCONNECTION);
        EXPECT_EQ(test::ReferencesTo(leaving.Get()), 1u);
        EXPECT_EQ(test::ReferencesTo(staying.Get()), 2u);

        com::Ref<IEnumConnections> connections;
        ASSERT_EQ(point->EnumConnections(connections.Receive()), S_OK);
        CONNECTDATA data[3] = {};
        ULONG fetched = 0;
        EXPECT_EQ(connections->Next(3, data, &fetched), S_FALSE);
        ASSERT_EQ(fetched, 2u);
        EXPECT_EQ(data[1].dwCookie, cookies[2]);
        for (ULONG i = 0; i < fetched; ++i) data[i].pUnk->Release();

        com::Ref<IEnumConnectionPoints> points;
        ASSERT_EQ(container->EnumConnectionPoints(points.Receive()), S_OK);
        com::Ref<IConnectionPoint> again;
        EXPECT_EQ(points->Next(1, again.Receive(), nullptr), S_OK);
        EXPECT_EQ(again.Get(), point.Get());
        EXPECT_EQ(points->Skip(1), S_FALSE);
        com::Ref<IConnectionPointContainer> owner;
        EXPECT_EQ(point->GetConnectionPointContainer(owner.Receive()), S_OK);
        EXPECT_TRUE(com::SameObject(owner.Get(), component->AsUnknown()));
    }
    EXPECT_EQ(alive, 0);
}

}  // namespace
}  // namespace vlm::server
