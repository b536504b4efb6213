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
    Start(HostOptions options, Words words) {
        ui::ConsoleToolkit toolkit(ui::ConsoleScript(std::move(words)), log);
        frmStart start(toolkit, options, *Date::FromYmd(2011, 4, 10), [this](const HostOptions& chosen) {
            opened.push_back(chosen.command + " " + std::to_string(chosen.clinic.value_or(0)) + " " +
                             chosen.dataFolder);
            if (chosen.command == "ASLPanoramico") throw Error("non si apre");
        });
        toolkit.ShowModal(start);
    }
    void ExpectSaid(const Words& parts) const {
        for (const std::string& part : parts) EXPECT_NE(out.str().find(part), std::string::npos) << part << out.str();
    }

    std::ostringstream out;
    ui::JsonEventLog log{out};
    Words opened;
};

HostOptions In(const std::string& folder, int clinic) {
    HostOptions options;
    options.dataFolder = folder;
    options.clinic = clinic;
    return options;
}

std::string Clinics(const test::TempFolder& temp) {
    const std::string folder = temp.Folder("dati");
    for (const char* name : {"Studio0012", "Studio0007", "Studio0099", "Studio12"})
        test::WriteBytes(folder + "/" + name + ".sqlite", "");
    SqliteWriter master(folder + "/Aldra.sqlite");
    master.Execute(
        "CREATE TABLE Studi (IDStudio INTEGER PRIMARY KEY, RagioneSociale VARCHAR(100), Nome VARCHAR(100));"
        "INSERT INTO Studi VALUES (7, 'Poliambulatorio', 'Centro'), (12, NULL, 'Mare');");
    master.Commit();
    return folder;
}

TEST(StartWindow, OffersTheClinicsOfTheFolderAndOpensWhatIsChosen) {
    const test::TempFolder temp;
    const std::string folder = Clinics(temp);
    const Start start(In(folder, 12), {"cboStudio?", "cmdDemo?", "cmdPrestazioni!", "cboStudio=#0", "cmdProgetti!",
                                       "cmdRicette!", "cmdPazienti!"});
    start.ExpectSaid({R"("value":1,"text":"12 - Mare")",
                      R"({"key":0,"text":"7 - Poliambulatorio Centro"},{"key":1,"text":"12 - Mare"},)"
                      R"({"key":2,"text":"99"}])",
                      R"("name":"cmdDemo","value":"","text":"","enabled":true,"visible":false)",
                      R"("text":"non si apre","caption":"Aldra","icon":"critical")"});
    EXPECT_EQ(start.opened, (Words{"ASLExport 12 " + folder, "ExportProgetti 7 " + folder, "ASLPanoramico 7 " + folder,
                                   "ASLImportPatient 7 " + folder}));
}

TEST(StartWindow, AFolderWithoutClinicsCanGetTheDemo) {
    const test::TempFolder temp;
    const std::string folder = temp.Folder("vuota");
    const Start start(In(temp / "manca", 1), {"cmdPrestazioni?", "answer:" + folder, "key:txtDati=Ctrl+R", "cmdDemo!",
                                              "cboStudio?", "cmdPrestazioni!"});
    start.ExpectSaid({R"("name":"cmdPrestazioni","value":"","text":"","enabled":false)",
                      R"("kind":"folder","filter":"","filterIndex":0,"folder":")" + (temp / "manca"),
                      R"({"key":1,"text":"16)"});
    EXPECT_EQ(start.opened, Words{"ASLExport 12 " + folder});
}

TEST(StartWindow, OffersTheClinicsOfAServer) {
    const test::TempFolder temp;
    const tds::TdsServer server(Clinics(temp), test::ServerOptions());
    HostOptions options;
    options.odbcText = test::OdbcServerText(server) + ";PWD=" + test::kServerPassword;
    const Start start(options, {"cmdDemo?", "cboStudio?", "cmdProgetti!"});
    start.ExpectSaid({R"("name":"cboStudio","value":1,"text":"12 - Mare")",
                      R"("name":"cmdDemo","value":"","text":"","enabled":true,"visible":false)"});
    EXPECT_EQ(start.opened, Words{"ExportProgetti 12 ."});

    options.odbcText += "errata";
    const Start refused(options, {"cboStudio?", "cmdRicette?"});
    const std::string said = refused.out.str();
    EXPECT_EQ(said.find("non è riuscito"), said.rfind("non è riuscito")) << "told once: " << said;
    EXPECT_EQ(said.find(test::kServerPassword), std::string::npos) << said;
    refused.ExpectSaid({"ospite", R"("name":"cmdRicette","value":"","text":"","enabled":false)"});
}

}  // namespace
}  // namespace vlm::host
