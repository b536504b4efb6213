#include <gtest/gtest.h>

#include "dialogs/Dialog.h"
#include "frame/ModGeneral.h"
#include "frame/ModSysTables.h"
#include "support/FakeConnection.h"
#include "support/FakeServices.h"
#include "support/ServiceClinic.h"
#include "values/Error.h"

namespace vlm {
namespace {

using test::FakeServices;
using test::ServiceClinic;

TEST(ModGeneralTest, PathsAndQuarters) {
    EXPECT_EQ(test::Joined(PathCombine("C:\\Export\\", "a.txt"), PathCombine("C:\\Export", "a.txt"),
                           FileNameOf("C:\\a\\b\\c.txt"), FileNameOf("c.txt")),
              "C:\\Export\\a.txt|C:\\Export\\a.txt|c.txt|c.txt|");
    std::string quarters;
    for (std::int16_t month = 1; month <= 12; ++month) quarters += std::to_string(QuarterOfMonth(month));
    EXPECT_EQ(quarters, "111222333444");
    EXPECT_TRUE(IsOwnedMenuType(7) && IsOwnedMenuType(10) && !IsOwnedMenuType(8));
}

TEST(ModSysTablesTest, PickListsThatCannotLoadAreEmpty) {
    test::FakeConnection connection;
    connection.tables["Branche"] = {{"IDBranca", "Branca", "Codice"},
                                    {{std::int64_t{4}, std::string("Cardiologia"), std::monostate()}}};
    connection.tables["Larga"] = {{"IDBranca", "Branca"},
                                  {{std::int64_t{1}, std::string("A")}, {5e9, std::string("B")}}};
    connection.tables["Altra"] = {{"ID", "Branca"}, {{std::int64_t{1}, std::string("A")}}};
    for (const char* source : {"Larga", "Altra", "Mancante"}) {
        ui::Dialog dialog("frmProva", "");
        ui::PickList list(dialog, "cboBranca");
        list.rowSource = "Branche";
        list.keyColumn = "Branca.IDBranca";
        list.displayColumn = "Branca";
        LoadPickList(list, connection);
        list.SelectKey(4);
        EXPECT_EQ(list.SelectedText() + list.SelectedColumn("Codice"), "Cardiologia") << "Null is no text";
        list.rowSource = source;
        EXPECT_THROW(LoadPickList(list, connection), Error) << source;
        EXPECT_EQ(list.RowCount(), 0) << source;
        EXPECT_EQ(list.SelectedIndex(), -1) << source;
    }
}

TEST(ModGeneralTest, LooksUpTheClinicAndGivesNothingWhereThereIsNone) {
    ServiceClinic clinic(test::kNoRows);
    FakeServices services(clinic.Connect());
    data::Connection& connection = services.library.RequireConnection();
    const auto region = [&](int clinicId) { return GetIDRegioneTariffario(services.library, connection, clinicId); };
    EXPECT_EQ(test::Joined(GetIDStudio(services.library), GetNumeroASL(services.library, connection),
                           GetCodiceDistretto(services.library, connection), region(0), region(999), region(-1),
                           LookupValue(&connection, "Aldra..Comune", "CodiceISTAT", "IDComune = 9"),
                           LookupValue(&connection, "Aldra..Comune", "CodiceISTAT", "IDComune = 10"),
                           LookupValue(nullptr, "Nowhere", "X", "1 = 1")),
              "12|201|03|19|0|0|082053|||");
    EXPECT_THROW(LookupValue(&connection, "Nowhere", "X", "1 = 1"), Error);
    services.library.SetConnection(nullptr);
    EXPECT_THROW(GetIDStudio(services.library), Error);
}

TEST(ModGeneralTest, NewKeysKeepOutOfTheReservedRange) {
    ServiceClinic clinic;
    clinic.extraSql =
        "CREATE TABLE MenuItem (IDMenuItem INTEGER PRIMARY KEY, IDTipoMenuItem INT); INSERT INTO MenuItem VALUES (1, "
        "7),"
        "(2, 10), (3, 8), (4, NULL); CREATE TABLE Vuota (ID INT); CREATE TABLE Piena (ID INT); INSERT INTO Piena VALUES"
        " (41), (1000005), (-3);  CREATE TABLE Bassa (ID INT); INSERT INTO Bassa VALUES (41);";
    clinic.Create({});
    FakeServices services(clinic.Connect());
    using Case = std::tuple<const char*, std::int32_t, const char*, double>;
    for (const auto& [table, menuItem, owner, key] :
         {Case{"Vuota", 0, "", 1}, Case{"Vuota", 1, "", 1000001}, Case{"Vuota", 2, "0", 1000001},
          Case{"Vuota", 1, "5", 1}, Case{"Vuota", 3, "", 1}, Case{"Vuota", 4, "", 1}, Case{"Vuota", 99, "", 1},
          Case{"Piena", 0, "", 1000006}, Case{"Piena", 1, "", 1000006}, Case{"Bassa", 0, "", 42},
          Case{"Bassa", 1, "", 1000001}}) {
        services.settings.values.clear();
        if (*owner != '\0') services.settings.values["Owner"] = owner;
        EXPECT_EQ(GetNewID(services.library, table, "ID", menuItem), key) << table << menuItem << owner;
    }
}

TEST(ModSysTablesTest, BindsEveryReferenceTable) {
    ServiceClinic clinic;
    clinic.masterSql =
        "DELETE FROM Studi; INSERT INTO Studi (IDStudio, RagioneSociale, Nome, IDEquipe) VALUES (1,'Zeta',NULL,3),"
        "(2,'Alfa','Due',1),(3,'Beta','Tre',0),(4,'Gamma','Quattro',NULL);"
        "INSERT INTO TipoRevocaPaziente VALUES (2,'Decesso'),(1,'Trasferimento');";
    clinic.Create({});
    FakeServices services(clinic.Connect());
    ui::Dialog dialog("d", "");
    ui::PickList list(dialog, "list");
    const auto shown = [&](PickListKind kind, const std::string& condition = {}) {
        FillPickList(services.library, list, kind, condition);
        std::string rows;
        for (int i = 0; i < list.RowCount(); ++i) rows += std::to_string(list.KeyAt(i)) + list.TextAt(i) + ";";
        return rows;
    };
    EXPECT_EQ(shown(PickListKind::Specialists), "7Rossi Anna;8Bianchi Ugo;9Verdi Pia;");
    EXPECT_EQ(shown(PickListKind::Specialists, "IDSpecialista = 8"), "8Bianchi Ugo;");
    EXPECT_EQ(shown(PickListKind::Branches, "ignored"), "1Cardiologia;2Oculistica;");
    EXPECT_EQ(shown(PickListKind::Months).substr(0, 20), "1gennaio;2febbraio;3");
    EXPECT_EQ(shown(PickListKind::Centres), "2Alfa Due;1Zeta ;");
    EXPECT_EQ(shown(PickListKind::RevocationTypes), "1Trasferimento;2Decesso;");
    EXPECT_EQ(shown(static_cast<PickListKind>(9)), "1Trasferimento;2Decesso;");
}

}  // namespace
}  // namespace vlm
