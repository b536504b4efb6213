#include <gtest/gtest.h>
#include <sstream>

#include "console/ConsoleToolkit.h"
#include "console/JsonEventLog.h"
#include "desktop/WindowedProgramStarter.h"
#include "frmAnomalie.h"
#include "support/TempFolder.h"
#include "values/Error.h"

/// Texts that the components open: the host shows them in dialogs of its own.
namespace vlm::host::test {
namespace {

using vlm::test::TempFolder;
using vlm::test::WriteBytes;

TEST(AnomalyReportTest, OtherTextsAreNoReport) {
    const TempFolder folder;
    for (const char* text :
         {"", "\r\n", "Fattura A-1 del 16/03/2011:\r\n", "Fattura A-1 del 16/03/2011: x\r\nNr. record elaborati: 3\r\n",
          "Fattura A-1: x", "201190123456"}) {
        WriteBytes(folder / "altro.txt", text);
        EXPECT_FALSE(AnomalyReport(folder / "altro.txt").IsReport()) << text;
    }
    EXPECT_THROW(AnomalyReport(folder / "manca.txt"), Error);
}

/// What comes of a command; a program that the machine starts is an event.
std::string Started(const std::string& command, const std::vector<std::string>& steps = {}) {
    std::ostringstream out;
    ui::JsonEventLog log(out);
    ui::ConsoleToolkit toolkit(ui::ConsoleScript(steps), log);
    ui::LoggedProgramStarter machine(log);
    WindowedProgramStarter(toolkit, machine).Start(command);
    return out.str();
}

TEST(WindowedProgramStarterTest, ShowsReportsAsListsAndOtherTextsLineByLine) {
    const TempFolder folder;
    const std::string several = folder / "C123456Err.txt", one = folder / "Err.txt", other = folder / "2011 altro.tmp";
    const std::string entry = "Fattura A-125 del 16/03/2011: [12] Numero ricetta mancante\r\n";
    WriteBytes(several, entry +
                            "Ricevuta -7 del 01/02/2011: [8] Sesso dell'utente mancante\r\n\r\n"
                            "Fattura B-C-9 del 16/03/2011:  - Prestazione 2: Data: a \xE8 b\r\n" +
                            entry);
    WriteBytes(one, entry);
    WriteBytes(other, "prima \xE0\r\n\r\nultima");
    const std::vector<std::string> steps{"grdAnomalie?", "lblTotale?", "cmdApri!"};
    const std::string list = Started("Notepad.exe " + several, steps);
    for (const auto& [told, part] : std::initializer_list<std::pair<std::string, std::string>>{
             {list, R"("name":"frmAnomalie")"},
             {list, R"("cells":[["Fattura","A-125","16/03/2011","","[12] Numero ricetta mancante"],)"
                    R"(["Ricevuta","-7","01/02/2011","","[8] Sesso dell'utente mancante"],)"
                    R"(["Fattura","B-C-9","16/03/2011","2","Data: a è b"]])"},
             {list, R"("caption":"3 anomalie")"},
             {list, R"({"event":"run","command":"Notepad.exe )" + several + "\"}\n"},
             {Started("Notepad.exe " + one, steps), R"("caption":"1 anomalia")"},
             {Started("notepad.EXE \"" + other + "\"", {"grdTesto?"}),
              R"("cells":[["1","prima à"],["2",""],["3","ultima"]],"current":0})"
              "\n{\"event\":\"closed\""},
             {Started("Calc.exe 1"), R"({"event":"run","command":"Calc.exe 1"})"}}) {
        EXPECT_NE(told.find(part), std::string::npos) << part << " in " << told;
    }
    EXPECT_THROW(Started("Notepad.exe " + (folder / "manca.txt")), Error);
}

}  // namespace
}  // namespace vlm::host::test
