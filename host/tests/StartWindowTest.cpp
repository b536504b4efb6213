#include <gtest/gtest.h>
#include <sstream>

#include "console/ConsoleToolkit.h"
#include "console/JsonEventLog.h"
#include "databases/SqliteWriter.h"
#include "frmStart.h"
#include "support/OdbcServerText.h"
#include "support/TempFolder.h"
#include "values/Error.h"

namespace vlm::host {
namespace {

using Words = std::vector<std::string>;

struct Start {
    Start(const std::string& folder, int clinic, Words words) {
        HostOptions options;
        options.dataFolder = folder;
        options.clinic = clinic;
        Show(options, std::move(words));
    }
    Start(const HostOptions& options, Words words) { Show(options, std::move(words)); }

    void Show(HostOptions options, Words words) {
        ui::ConsoleToolkit toolkit(ui::ConsoleScript(std::move(words)), log);
        options.user = "PROVA";
        frmStart start(toolkit, options, *Date::FromYmd(2011, 4, 10), [this](const HostOptions& chosen) {
            opened.push_back(chosen.command + " " + std::to_string(chosen.clinic.value_or(0)) + " " +
                             chosen.dataFolder + " " + chosen.user);
            if (fails) throw Error("non si apre");
        });
        toolkit.ShowModal(start);
    }
    bool Has(const std::string& part) const { return out.str().find(part) != std::string::npos; }

    std::ostringstream out;
    ui::JsonEventLog log{out};
    Words opened;
    inline static bool fails = false;
};

void MakeClinic(const std::string& folder, const std::string& name, const std::string& sql) {
    SqliteWriter database(folder + "/" + name + ".sqlite");
    database.Execute(sql);
    database.Commit();
}

std::string TwoClinics(const test::TempFolder& temp) {
    const std::string folder = temp.Folder("dati");
    MakeClinic(folder, "Aldra",
               "CREATE TABLE Studi (IDStudio INTEGER PRIMARY KEY, RagioneSociale VARCHAR(100), Nome VARCHAR(100));"
               "INSERT INTO Studi (IDStudio, RagioneSociale, Nome) VALUES"
               " (7, 'Poliambulatorio', 'Centro'), (12, NULL, 'Mare');");
    MakeClinic(folder, "Studio0012", "CREATE TABLE A (B INT);");
    MakeClinic(folder, "Studio0007", "CREATE TABLE A (B INT);");
    MakeClinic(folder, "Studio0099", "CREATE TABLE A (B INT);");
    MakeClinic(folder, "Studio12", "CREATE TABLE A (B INT);");
    return folder;
}

TEST(StartWindow, OffersTheClinicsOfTheFolderAndOpensWhatIsChosen) {
    const test::TempFolder temp;
    const std::string folder = TwoClinics(temp);
    const Start start(
        folder, 12,
        {"cboStudio?", "cmdDemo?", "cmdPrestazioni!", "cboStudio=#0", "cmdProgetti!", "cmdRicette!", "cmdPazienti!"});
    EXPECT_TRUE(start.Has(R"("value":1,"text":"12 - Mare")")) << start.out.str();
    EXPECT_TRUE(start.Has(R"({"key":0,"text":"7 - Poliambulatorio Centro"},{"key":1,"text":"12 - Mare"},)"
                          R"({"key":2,"text":"99"}])"));
    EXPECT_TRUE(start.Has(R"("name":"cmdDemo","value":"","text":"","enabled":true,"visible":false)"));
    EXPECT_EQ(start.opened, (Words{"ASLExport 12 " + folder + " PROVA", "ExportProgetti 7 " + folder + " PROVA",
                                   "ASLPanoramico 7 " + folder + " PROVA", "ASLImportPatient 7 " + folder + " PROVA"}));
}

TEST(StartWindow, WhatFailsIsToldAndTheWindowStays) {
    const test::TempFolder temp;
    Start::fails = true;
    const Start start(TwoClinics(temp), 1, {"cmdPrestazioni!", "cboStudio?"});
    Start::fails = false;
    EXPECT_TRUE(start.Has(R"("text":"non si apre","caption":"Aldra","icon":"critical")"));
    EXPECT_TRUE(start.Has(R"("name":"cboStudio","value":0)")) << "the clinic asked for is not there";
}

TEST(StartWindow, AFolderWithoutClinicsCanGetTheDemo) {
    const test::TempFolder temp;
    const std::string folder = temp.Folder("vuota");
    const Start start(temp / "manca", 12,
                      {"cmdPrestazioni?", "answer:" + folder, "key:txtDati=Ctrl+R", "txtDati?", "cmdDemo!",
                       "cboStudio?", "cmdPrestazioni!"});
    EXPECT_TRUE(start.Has(R"("name":"cmdPrestazioni","value":"","text":"","enabled":false)"));
    EXPECT_TRUE(start.Has(R"("kind":"folder","filter":"","filterIndex":0,"folder":")" + (temp / "manca")));
    EXPECT_TRUE(start.Has(R"({"key":1,"text":"16)")) << start.out.str();
    EXPECT_EQ(start.opened, Words{"ASLExport 12 " + folder + " PROVA"});
}

TEST(StartWindow, OffersTheClinicsOfAServer) {
    const test::TempFolder temp;
    const tds::TdsServer server(TwoClinics(temp), test::ServerOptions());
    HostOptions options;
    options.odbcText = test::OdbcServerText(server, "Studio0012") + ";PWD=" + test::kServerPassword;
    const Start start(options, {"txtDati?", "cmdLink?", "cmdDemo?", "cboStudio?", "cmdRicette!"});
    EXPECT_TRUE(start.Has(R"("name":"cboStudio","value":1,"text":"12 - Mare")")) << start.out.str();
    for (const char* hidden : {"txtDati", "cmdLink", "cmdDemo"}) {
        EXPECT_TRUE(
            start.Has(std::string(R"("name":")") + hidden + R"(","value":"","text":"","enabled":true,"visible":false)"))
            << start.out.str();
    }
    EXPECT_EQ(start.opened, Words{"ASLPanoramico 12 . PROVA"});

    options.odbcText += "errata";
    const Start refused(options, {"cboStudio?", "cmdRicette?"});
    const std::string said = refused.out.str();
    EXPECT_EQ(said.find("non è riuscito"), said.rfind("non è riuscito")) << "told once: " << said;
    EXPECT_TRUE(refused.Has("ospite") && !refused.Has(test::kServerPassword)) << said;
    EXPECT_TRUE(refused.Has(R"("name":"cmdRicette","value":"","text":"","enabled":false)"));
}

}  // namespace
}  // namespace vlm::host
