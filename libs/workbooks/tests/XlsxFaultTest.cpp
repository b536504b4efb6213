#include <gtest/gtest.h>

#include "SheetDump.h"
#include "XlsxFile.h"
#include "support/Caught.h"
#include "support/TempFolder.h"

namespace vlm::test {

namespace {

class XlsxFaultTest : public testing::Test {
protected:
    std::string Fault(const XlsxFile& file) {
        file.Write(path_);
        return FaultOf(path_);
    }
    std::string FaultOfRows(const std::string& rows) { return Fault(XlsxFile().SheetXml("F", rows)); }

    TempFolder folder_;
    const std::string path_ = folder_ / "a.xlsx";
};

TEST_F(XlsxFaultTest, FilesThatAreNoWorkbook) {
    EXPECT_EQ(FaultOf(path_), "Impossibile aprire il file " + path_ + ": percorso inesistente.");
    EXPECT_EQ(FaultOf(folder_.Folder("x")), "Impossibile aprire il file " + (folder_ / "x") + ": è una cartella.");
    const std::vector<std::pair<std::string, std::string>> cases = {
        {"", "il file è vuoto"},
        {"P", "il suo formato non è né xlsx né xls"},
        {"Cognome;Nome\r\n", "il suo formato non è né xlsx né xls"},
        {"PK\x03\x04", "l'archivio è incompleto o danneggiato"},
        {"\xD0\xCF\x11\xE0", "il file è incompleto o danneggiato"}};
    for (const auto& [bytes, reason] : cases) {
        WriteBytes(path_, bytes);
        EXPECT_EQ(FaultOf(path_), Unreadable(path_, reason)) << bytes;
    }
}

TEST_F(XlsxFaultTest, SheetsThatAreNotThere) {
    XlsxFile().Sheet("uno", {{1.0}}).Sheet("due", {}).Write(path_);
    const auto workbook = OpenedWorkbook(path_);
    for (const int number : {0, 3, -1}) {
        EXPECT_EQ(CaughtText([&] { workbook->Sheet(number); }), "Il file " + path_ + " non contiene il foglio numero " +
                                                                    std::to_string(number) + ": i suoi fogli sono 2.");
    }
}

TEST_F(XlsxFaultTest, MissingAndBrokenParts) {
    const auto good = [] { return XlsxFile().Sheet("Foglio", {{"a"}}); };
    const std::string part = "xl/worksheets/sheet1.xml";
    const std::string head = "<worksheet><sheetData>";
    const std::vector<std::pair<XlsxFile, std::string>> cases = {
        {good().Without("xl/workbook.xml"), "manca la parte xl/workbook.xml"},
        {good().Without(part), "manca la parte " + part},
        {good().Without("xl/sharedStrings.xml"), "manca la parte xl/sharedStrings.xml"},
        {good().Without("xl/styles.xml"), "manca la parte xl/styles.xml"},
        {good().Without("xl/_rels/workbook.xml.rels"), "manca il foglio \"Foglio\""},
        {good().Part("xl/workbook.xml", ""), "la parte xl/workbook.xml non è XML valido"},
        {good().Part("xl/workbook.xml", "<workbook>"), "la parte xl/workbook.xml non è XML valido"},
        {good().Part("xl/workbook.xml", "<html/>"), "la parte xl/workbook.xml non è una cartella di lavoro"},
        {good().Part(part, ""), "la parte " + part + " è incompleta"},
        {good().Part(part, head + "<row><c/></row>"), "la parte " + part + " è incompleta"},
        {good().Part(part, head + "<row><c/>"), "la parte " + part + " è incompleta"},
        {good().Part(part, head + "<row><c r=\"A1"), "la parte " + part + " è incompleta"},
        {good().Part(part, head + "<!-- "), "la parte " + part + " è incompleta"},
        {good().Part(part, head + "<row><c></row></sheetData></worksheet>"), "la parte " + part + " non è XML valido"},
        {good().Part(part, "<chartsheet/>"), "la parte " + part + " non è del tipo atteso"},
        {good().Part(part, "<!DOCTYPE worksheet [<!ENTITY a \"b\">]>" + head + "</sheetData></worksheet>"),
         "la parte " + part + " contiene dichiarazioni che non sono ammesse"},
        {good().Part(part, "\xFF\xFE<"), "la parte " + part + " è scritta in una codifica non prevista"}};
    for (const auto& [file, reason] : cases) EXPECT_EQ(Fault(file), Unreadable(path_, reason));
}

TEST_F(XlsxFaultTest, BrokenCells) {
    const std::string reference = "il riferimento di cella ";
    const std::vector<std::pair<std::string, std::string>> cases = {
        {"<row r=\"0\"/>", reference + "\"0\" non è valido"},
        {"<row r=\"1048577\"/>", reference + "\"1048577\" non è valido"},
        {"<row r=\"-1\"/>", reference + "\"-1\" non è valido"},
        {"<row r=\"x\"/>", reference + "\"x\" non è valido"},
        {"<row><c r=\"XFE1\"/></row>", reference + "\"XFE1\" non è valido"},
        {"<row><c r=\"\"/></row>", reference + "\"\" non è valido"},
        {"<row r=\"2\"><c r=\"A3\"/></row>", reference + "\"A3\" non è valido"},
        {"<row><c r=\"XFD1\"/><c/></row>", "una cella sta fuori dal foglio"},
        {"<row r=\"1048576\"/><row><c/></row>", "una cella sta fuori dal foglio"},
        {"<row><c t=\"s\"><v>0</v></c></row>", "la cella A1 rimanda a un testo che non c'è"},
        {"<row><c t=\"s\"><v>-1</v></c></row>", "la cella A1 rimanda a un testo che non c'è"},
        {"<row><c t=\"s\"><v>4294967296</v></c></row>", "la cella A1 rimanda a un testo che non c'è"},
        {"<row><c/><c><v>dodici</v></c></row>", "la cella B1 non contiene un numero valido"},
        {"<row><c><v>1e999</v></c></row>", "la cella A1 non contiene un numero valido"},
        {"<row><c><v>nan</v></c></row>", "la cella A1 non contiene un numero valido"},
        {"<row><c t=\"b\"><v>si</v></c></row>", "la cella A1 non contiene un valore logico valido"},
        {"<row><c t=\"zz\"><v>1</v></c></row>", "la cella A1 è di un tipo non previsto"}};
    for (const auto& [rows, reason] : cases) EXPECT_EQ(FaultOfRows(rows), Unreadable(path_, reason)) << rows;
}

TEST_F(XlsxFaultTest, RelationsThatGoInCircles) {
    const std::string relations =
        "<Relationships><Relationship Id=\"rId1\" Type=\"x/worksheet\" Target=\"TARGET\"/></Relationships>";
    const std::vector<std::pair<std::string, std::string>> cases = {
        {"workbook.xml", "la parte xl/workbook.xml non è del tipo atteso"},
        {"_rels/workbook.xml.rels", "la parte xl/_rels/workbook.xml.rels non è del tipo atteso"},
        {"../../../../etc/passwd", "manca la parte etc/passwd"},
        {"", "manca la parte xl"},
        {"x\" TargetMode=\"External", "manca il foglio \"F\""}};
    for (const auto& [target, reason] : cases) {
        std::string content = relations;
        content.replace(content.find("TARGET"), 6, target);
        const XlsxFile file = XlsxFile().SheetXml("F", "").Part("xl/_rels/workbook.xml.rels", content);
        EXPECT_EQ(Fault(file), Unreadable(path_, reason)) << target;
    }
}

TEST_F(XlsxFaultTest, EntitiesAreNotUnfolded) {
    std::string declarations;
    for (int i = 1; i < 30; ++i) {
        const std::string before = "&e" + std::to_string(i - 1) + ';';
        declarations += "<!ENTITY e" + std::to_string(i) + " \"" + before + before + "\">";
    }
    const std::string head = "<!DOCTYPE x [<!ENTITY e0 \"bomba\">" + declarations + "]>";
    const XlsxFile inWorkbook =
        XlsxFile().Part("xl/workbook.xml", head + "<workbook><sheets>&e29;</sheets></workbook>");
    EXPECT_EQ(Fault(inWorkbook), "");
    const XlsxFile inTexts = XlsxFile().Sheet("F", {{"a"}}).Part("xl/sharedStrings.xml", head + "<sst><si/></sst>");
    EXPECT_EQ(Fault(inTexts),
              Unreadable(path_, "la parte xl/sharedStrings.xml contiene dichiarazioni che non sono ammesse"));
    XlsxFile().SheetXml("F", "<row><c t=\"str\"><v>&e29;&amp;</v></c></row>").Write(path_);
    EXPECT_EQ(DumpOf(OpenedWorkbook(path_)->Sheet(1), 1), std::vector<std::string>{"\"&e29;&"});
}

TEST_F(XlsxFaultTest, PartsThatUnfoldBeyondMeasure) {
    const std::string blanks(40U << 20, ' ');
    const std::string sheet = "xl/worksheets/sheet1.xml";
    const XlsxFile longGap = XlsxFile().SheetXml("F", blanks);
    EXPECT_EQ(Fault(longGap), Unreadable(path_, "la parte " + sheet + " si espande oltre misura"));
    const std::string half(20U << 20, 'x');
    const std::vector<std::pair<XlsxFile, std::string>> cases = {
        {XlsxFile().SheetXml("F", "<row><c t=\"str\"><v>" + half + "</v></c></row>"),
         "la parte " + sheet + " ha un elemento troppo grande"},
        {XlsxFile().SheetXml("F", "<!--" + half + "-->"), "la parte " + sheet + " ha un elemento troppo grande"},
        {XlsxFile().Part("xl/workbook.xml", "<workbook>" + half + "</workbook>"),
         "la parte xl/workbook.xml è troppo grande"},
        {XlsxFile().Part("xl/styles.xml", half), "la parte xl/styles.xml è troppo grande"},
        {XlsxFile().Part("_rels/.rels", half), "la parte _rels/.rels è troppo grande"}};
    for (const auto& [file, reason] : cases) EXPECT_EQ(Fault(file), Unreadable(path_, reason));
}

}  // namespace

}  // namespace vlm::test
