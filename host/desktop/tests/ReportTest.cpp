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

std::string Rows(const ui::GridModel& model) {
    std::string rows;
    for (int row = 0; row < model.RowCount(); ++row) {
        for (int column = 0; column < static_cast<int>(model.Columns().size()); ++column) {
            rows += model.Cell(row, column) + "|";
        }
        rows += "\n";
    }
    return rows;
}

TEST(AnomalyReportTest, EveryAnomalyIsARow) {
    const TempFolder folder;
    const std::string path = folder / "C123456Err.txt";
    WriteBytes(path,
               "Fattura A-125 del 16/03/2011: [12] Numero ricetta mancante\r\n"
               "Ricevuta -7 del 01/02/2011: [8] Sesso dell'utente mancante\r\n"
               "\r\n"
               "Fattura B-C-9 del 16/03/2011:  - Prestazione 2: Data: a \xE8 b\r\n"
               "Fattura A-125 del 16/03/2011: [12] Numero ricetta mancante\r\n");
    const AnomalyReport report(path);
    EXPECT_TRUE(report.IsReport());
    EXPECT_EQ(Rows(report),
              "Fattura|A-125|16/03/2011||[12] Numero ricetta mancante|\n"
              "Ricevuta|-7|01/02/2011||[8] Sesso dell'utente mancante|\n"
              "Fattura|B-C-9|16/03/2011|2|Data: a è b|\n");
}

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
    const std::string report = folder / "20110311MErr.txt", other = folder / "2011 decodificato.tmp";
    WriteBytes(report, "Fattura A-125 del 16/03/2011: [12] Numero ricetta mancante\r\n");
    const std::string list = Started("Notepad.exe " + report, {"grdAnomalie?", "lblTotale?", "cmdApri!"});
    WriteBytes(other, "prima \xE0\r\n\r\nultima");
    const std::string text = Started("notepad.EXE \"" + other + "\"", {"grdTesto?"});
    const std::pair<std::string, std::string> parts[] = {
        {list, R"("name":"frmAnomalie")"},
        {list, R"("cells":[["Fattura","A-125","16/03/2011","","[12] Numero ricetta mancante"]])"},
        {list, R"("caption":"1 anomalia")"},
        {list, R"({"event":"run","command":"Notepad.exe )" + report + "\"}\n"},
        {text, R"("cells":[["1","prima à"],["2",""],["3","ultima"]])"}};
    for (const auto& [told, part] : parts) {
        EXPECT_NE(told.find(part), std::string::npos) << part << " in " << told;
    }
    EXPECT_EQ(text.find(R"("event":"run")"), std::string::npos);
}

TEST(WindowedProgramStarterTest, OtherProgramsAreTheMachinesAndWhatIsNotThereIsAnError) {
    EXPECT_EQ(Started("Calc.exe 1"), R"({"event":"run","command":"Calc.exe 1"})"
                                     "\n");
    EXPECT_THROW(Started("Notepad.exe " + (TempFolder() / "manca.txt")), Error);
}

}  // namespace
}  // namespace vlm::host::test
