#include <gtest/gtest.h>
#include <sstream>

#include "AnomalyReport.h"
#include "console/ConsoleToolkit.h"
#include "console/JsonEventLog.h"
#include "desktop/WindowedProgramStarter.h"
#include "support/FakeServices.h"
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

struct Started {
    explicit Started(const std::vector<std::string>& words) : toolkit(ui::ConsoleScript(words), log) {}
    bool Has(const std::string& part) const { return out.str().find(part) != std::string::npos; }

    std::ostringstream out;
    ui::JsonEventLog log{out};
    ui::ConsoleToolkit toolkit;
    vlm::test::FakeServices::Programs machine;
    WindowedProgramStarter programs{toolkit, machine};
};

TEST(WindowedProgramStarterTest, ShowsReportsAsListsAndOtherTextsLineByLine) {
    const TempFolder folder;
    const std::string report = folder / "20110311MErr.txt";
    WriteBytes(report, "Fattura A-125 del 16/03/2011: [12] Numero ricetta mancante\r\n");
    Started list({"grdAnomalie?", "lblTotale?", "cmdApri!"});
    list.programs.Start("Notepad.exe " + report);
    EXPECT_TRUE(list.Has(R"("name":"frmAnomalie")")) << list.out.str();
    EXPECT_TRUE(list.Has(R"("cells":[["Fattura","A-125","16/03/2011","","[12] Numero ricetta mancante"]])"));
    EXPECT_TRUE(list.Has(R"("caption":"1 anomalia")"));
    EXPECT_EQ(list.machine.started, std::vector<std::string>{"Notepad.exe " + report});

    WriteBytes(folder / "2011 decodificato.tmp", "prima \xE0\r\n\r\nultima");
    Started text({"grdTesto?"});
    text.programs.Start("notepad.EXE \"" + (folder / "2011 decodificato.tmp") + "\"");
    EXPECT_TRUE(text.Has(R"("cells":[["1","prima à"],["2",""],["3","ultima"]])")) << text.out.str();
    EXPECT_EQ(text.machine.started, std::vector<std::string>{});
}

TEST(WindowedProgramStarterTest, OtherProgramsAreTheMachinesAndWhatIsNotThereIsAnError) {
    const TempFolder folder;
    Started other({});
    other.programs.Start("Calc.exe 1");
    EXPECT_EQ(other.machine.started, std::vector<std::string>{"Calc.exe 1"});
    EXPECT_THROW(other.programs.Start("Notepad.exe " + (folder / "manca.txt")), Error);
    EXPECT_EQ(other.out.str(), "");
}

}  // namespace
}  // namespace vlm::host::test
