#include <gtest/gtest.h>
#include <sstream>

#include "PugliaClinic.h"
#include "export/ViewGrid.h"
#include "puglia/ASLExportPuglia.h"
#include "support/FakeServices.h"

namespace vlm::test {
namespace {

constexpr const char* kColumns =
    "Progr.:50;Cognome:100;Nome:100;Valuta:43;Tot. prestaz.:80;Tot. Ticket:80;Cod. assistito:100;"
    "Cod. Fisc. assistito:110;Num. ricetta:110;Data rilascio ricetta:115;Data spediz. ricetta:110;"
    "Cod. reg. erogatore:120;Sesso:45;Data nascita:77;Cod. comune res.:100;Cod. regione:75;Cod. USL res:75;"
    "Cod. branca:75;Cod. reg. erogatore:110;Cod. reg. prescrittore:115;Cod. prest. 1:85;Quant. 1:60;"
    "Cod. prest. 2:85;Quant. 2:60;Cod. prest. 3:85;Quant. 3:60;Cod. prest. 4:85;Quant. 4:60;Cod. prest. 5:85;"
    "Quant. 5:60;Cod. prest. 6:85;Quant. 6:60;Cod. prest. 7:85;Quant. 7:60;Cod. prest. 8:85;Quant. 8:60;"
    "Codice esenzione:65;Classe priorità:83;Tipo accesso:86;Data contatto:95;Data prima disp.:95;"
    "Data assegnata:95;Data refert.:95;Data inizio ciclo:95;Garantita:64;Suggerita:64;";

std::string ColumnsShown() {
    std::string shown;
    std::istringstream columns(kColumns);
    for (std::string title, width; std::getline(columns, title, ':') && std::getline(columns, width, ';');) {
        shown += (shown.empty() ? "" : ",") + (R"({"name":")" + title) + R"(","title":")" + title + R"(","width":)" +
                 width + R"(,"visible":true})";
    }
    return shown;
}

class PugliaPreviewTest : public ::testing::Test {
protected:
    PugliaPreviewTest() { clinic.Create({}); }

    HostRun View(const std::string& bytes) {
        WriteBytes(clinic.out + "/file.txt", bytes);
        return clinic.Run({"in:frmSelectFile", "txtPath=" + clinic.out + "/file.txt", "cmdConferma!",
                           "end:", "in:frmViewData", "grdList?", "cmdAnnulla!", "end:", "cmdVisualizza!"});
    }
    /// The first `columns` cells of every row shown.
    Lines RowsOf(const std::string& bytes, int columns) {
        WriteBytes(clinic.out + "/file.txt", bytes);
        files::LineReader file(clinic.out + "/file.txt");
        const ViewedFile shown(region, static_cast<std::int32_t>(bytes.size() / 343), file);
        Lines rows;
        for (int row = 0; row < shown.RowCount(); ++row) {
            rows.emplace_back();
            for (int column = 0; column < columns; ++column) rows.back() += shown.Cell(row, column) + "|";
        }
        return rows;
    }

    PugliaClinic clinic;
    FakeServices services;
    ASLExportPuglia region{services.library};
};

TEST_F(PugliaPreviewTest, ShowsEveryColumnAndCell) {
    const std::string second = PugliaLine()
                                   .At(105, "1")
                                   .At(106, "00000000")
                                   .At(158, "12345")
                                   .At(182, "12345099890101")
                                   .At(231, "01234567895-0000012500")
                                   .At(277, "U02000000000000000000000000")
                                   .At(320, "  ")
                                   .WithLineEnd();
    const HostRun run = View(PugliaLine().WithLineEnd() + second);
    const std::string empty = R"("","0","","0","","0","","0",)";
    const std::string cells =
        R"(["1","NICOLÒ","MARIA GRAZIA","E","41,32","3,00","ASS-4711","NCLMGR70E41G273K","1234567890123456",)"
        R"("27/02/2011","15/03/2011","123456","F","01/05/1970","82053","190","206","8","123456","077001",)"
        R"("897","2","","0",)" +
        empty + R"("","0","","0",)" +
        R"("E02","Breve","1","01/03/2011","10/03/2011","14/03/2011","16/03/2011","02/03/2011","G","S"],)"
        R"(["12345","NICOLÒ","MARIA GRAZIA","E","1.234.567,90","-12,50","ASS-4711","NCLMGR70E41G273K",)"
        R"("1234567890123456","27/02/2011","15/03/2011","123456","M","","82053","190","206","8","123456","077001",)"
        R"("897","2","","0","12345","9","98901","1",)" +
        empty + R"("E02","Urgente","2","","","","16/03/2011","02/03/2011","",""])";
    ASSERT_EQ(run.Of("state").size(), 1U) << run.errors;
    const std::string state = run.Of("state").front();
    EXPECT_NE(state.find(R"("rows":2,"columns":[)" + ColumnsShown() + "]"), std::string::npos) << state;
    EXPECT_NE(state.find(R"("cells":[)" + cells + R"(],"current":0)"), std::string::npos) << state;
    EXPECT_EQ(run.Of("closed").at(1), R"({"event":"closed","name":"frmViewData"})");
}

TEST_F(PugliaPreviewTest, FilesOfAnotherShapeShowWhatIsReadable) {
    const std::string line = PugliaLine().Line();
    const std::string whole = "1|NICOLÒ|";
    EXPECT_EQ(RowsOf(line + "\r\n" + line, 2), (Lines{whole, whole}));
    EXPECT_EQ(RowsOf(line + "\r\n" + line.substr(0, 15), 2), (Lines{whole, "|NIC|"}));
    EXPECT_EQ(RowsOf(line + "\n" + line + "\n" + line + "\n", 2), (Lines{whole, whole, whole}));
    EXPECT_EQ(RowsOf("\xEF\xBB\xBF" + std::string(12, '0') + "Nicolò\r\n", 2), Lines{"|Nicolò|"});
    // Two records by the file's length, one line.
    EXPECT_EQ(RowsOf(std::string(700, 'x'), 1), (Lines{"0|", "|"}));
    for (const std::string& cell :
         RowsOf("\r\n\r\n" + std::string(4, '\0') + "\xFF\xFE\n" + std::string(1000, '-'), 46))
        EXPECT_LE(cell.size(), 500U);
}

TEST_F(PugliaPreviewTest, AnEmptyOrMissingFileOpensNoViewer) {
    EXPECT_EQ(View("").Of("dialog").size(), 2U);  // export and file selection
    WriteBytes(clinic.out + "/file.txt", "");
    EXPECT_FALSE(region.ViewAsDecoded(clinic.out + "/file.txt", 0));
    EXPECT_FALSE(region.ViewAsDecoded(clinic.out + "/nothing.txt", 0));
    WriteBytes(clinic.out + "/file.txt", "x");
    EXPECT_TRUE(region.ViewAsDecoded(clinic.out + "/file.txt", 0));
}

TEST_F(PugliaPreviewTest, OpensALargeFileAndFindsItsRowsInAnyOrder) {
    constexpr int kRows = 50000;
    std::string bytes;
    bytes.reserve(kRows * 343U);
    Positions line = PugliaLine();
    for (int row = 0; row < kRows; ++row) {
        bytes += line.At(13, std::to_string(row) + "      ").WithLineEnd();
    }
    WriteBytes(clinic.out + "/file.txt", bytes);
    files::LineReader file(clinic.out + "/file.txt");
    ViewedFile shown(region, kRows, file);
    EXPECT_EQ(shown.RowCount(), kRows);
    for (const int row : {kRows - 1, 0, 23456, 23457, 23455, 7, 49000}) {
        EXPECT_EQ(shown.Cell(row, 1), std::to_string(row));
        EXPECT_EQ(shown.Cell(row, 45), "S");
    }
    // Somebody cuts the file while it is looked at.
    std::filesystem::resize_file(clinic.out + "/file.txt", 343);
    EXPECT_EQ(shown.Cell(20000, 1), "");
    EXPECT_EQ(shown.Cell(0, 1), "0");
}

}  // namespace
}  // namespace vlm::test
