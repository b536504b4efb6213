#include <algorithm>
#include <gtest/gtest.h>

#include "SheetDump.h"
#include "XlsxFile.h"
#include "support/TempFolder.h"

namespace vlm::test {

namespace {

using Lines = std::vector<std::string>;

class XlsxWorkbookTest : public testing::Test {
protected:
    /// The first sheet of a workbook.
    Lines Read(const XlsxFile& file, std::uint32_t columns) {
        file.Write(path_);
        return DumpOf(OpenedWorkbook(path_)->Sheet(1), columns);
    }
    /// One row of cells given as XML.
    std::string Row(const std::string& cells) {
        XlsxFile file;
        file.SharedXml("<si><t>zero</t></si><si><t>uno</t></si>").SheetXml("F", "<row>" + cells + "</row>");
        return Read(file, 3).at(0);
    }

    TempFolder folder_;
    const std::string path_ = folder_ / "pazienti.dat";  // the extension tells nothing
};

TEST_F(XlsxWorkbookTest, ValuesComeBackAsTheyWereWritten) {
    EXPECT_EQ(DumpOf(OpenedWorkbook(DataFile("values.xlsx"))->Sheet(1), 4), ValuesShown());
    EXPECT_EQ(DumpOf(OpenedWorkbook(DataFile("from1904.xlsx"))->Sheet(1), 1), Lines{"@10/04/2011"});
}

TEST_F(XlsxWorkbookTest, EveryKindOfCell) {
    const std::vector<std::pair<std::string, std::string>> cases = {
        {"<c t=\"s\"><v>1</v></c>", "\"uno||"},
        {"<c t=\"s\"><v> 0 </v></c>", "\"zero||"},
        {"<c><v>1.5E3</v></c>", "#1500||"},
        {"<c t=\"n\"><v>-0.25</v></c>", "#-0,25||"},
        {"<c><f>A1+1</f><v>7</v></c>", "#7||"},
        {"<c t=\"str\"><f>A1&amp;\"x\"</f><v>a &lt; b</v></c>", "\"a < b||"},
        {"<c t=\"str\"><f>\"\"</f><v></v></c>", "\"||"},
        {"<c t=\"inlineStr\"><is><t>in riga</t></is></c>", "\"in riga||"},
        {"<c t=\"b\"><v>1</v></c><c t=\"b\"><v>false</v></c>", "?Vero|?Falso|"},
        {"<c t=\"e\"><v>#N/A</v></c><c t=\"e\"><v>#DIV/0!</v></c><c t=\"e\"><v>#REF!</v></c>",
         "\"#N/D|\"#DIV/0!|\"#RIF!"},
        {"<c t=\"d\"><v>2011-04-10T06:00:00</v></c><c t=\"d\"><v>mai</v></c>", "@10/04/2011 06:00:00|\"mai|"},
        {"<c s=\"1\"/><c/><c><v/></c>", "||"},
        {"<c s=\"99\"><v>40643</v></c>", "#40643||"},
        {"<c t=\"inlineStr\"><is><t><![CDATA[<b>]]>&#xE8;<!-- c -->!</t></is></c>", "\"<b>è!||"}};
    for (const auto& [cells, expected] : cases) EXPECT_EQ(Row(cells), expected) << cells;
}

TEST_F(XlsxWorkbookTest, TextsAreJoinedFromTheirRuns) {
    const std::vector<std::pair<std::string, std::string>> cases = {
        {"<r><t xml:space=\"preserve\">Maria </t></r><r><rPr><b/></rPr><t>Rossi</t></r>", "Maria Rossi"},
        {"<t>漢字</t><rPh sb=\"0\" eb=\"2\"><t>かんじ</t></rPh><phoneticPr fontId=\"1\"/>", "漢字"},
        {"<t> \n in mezzo </t>", "in mezzo"},
        {"<t xml:space=\"preserve\"> </t>", " "},
        {"<t>a_x000D_b_x005F_x000D_</t>", "a\rb_x000D_"},
        {"<t>_x00_x41_xZZZZ__x0041_</t>", "_x00_x41_xZZZZ_A"},
        {"<t/>", ""},
        {"", ""}};
    for (const auto& [item, expected] : cases) {
        EXPECT_EQ(Row("<c t=\"inlineStr\"><is>" + item + "</is></c>"), '"' + expected + "||") << item;
        XlsxFile shared;
        shared.SharedXml("<si>" + item + "</si>").SheetXml("F", "<row><c t=\"s\"><v>0</v></c></row>");
        EXPECT_EQ(Read(shared, 1), Lines{'"' + expected}) << item;
    }
}

TEST_F(XlsxWorkbookTest, DatesAreNumbersOfADateStyle) {
    std::string formats, styles, row;
    for (const char* code : {"dd/mm/yyyy", "[Red]0.00", "[h]:mm", "&quot;dym&quot; 0"}) {
        const std::string id = std::to_string(164 + std::count(formats.begin(), formats.end(), '<'));
        formats += "<numFmt numFmtId=\"" + id + "\" formatCode=\"" + code + "\"/>";
    }
    for (const int format : {0, 14, 164, 165, 166, 167, 13, 14, 22, 23, 27, 45, 49, 58, 59}) {
        row += "<c s=\"" + std::to_string(std::count(styles.begin(), styles.end(), '<')) + "\"><v>40643</v></c>";
        styles += "<xf numFmtId=\"" + std::to_string(format) + "\"/>";
    }
    XlsxFile file;
    file.Part("xl/styles.xml", "<styleSheet><numFmts>" + formats +
                                   "</numFmts><cellStyleXfs><xf numFmtId=\"14\"/>"
                                   "</cellStyleXfs><cellXfs>" +
                                   styles + "</cellXfs></styleSheet>");
    const std::string day = "@10/04/2011";
    EXPECT_EQ(Read(file.SheetXml("F", "<row>" + row + "</row>"), 15),
              Lines{"#40643|" + day + '|' + day + "|#40643|" + day + "|#40643|#40643|" + day + '|' + day + "|#40643|" +
                    day + '|' + day + "|#40643|" + day + "|#40643"});
}

TEST_F(XlsxWorkbookTest, GapsAndOrderOfRowsAndCells) {
    const std::vector<std::tuple<std::string, Lines>> cases = {
        {"", {}},
        {"<row r=\"9\"/>", {}},
        {"<row><c r=\"A2\" s=\"1\"/></row>", {"||", "||"}},
        {"<row r=\"2\"><c r=\"C2\"><v>1</v></c></row>", {"||", "||#1"}},
        {"<row r=\"2\"><c r=\"B2\"><v>1</v></c><c><v>2</v></c></row><row><c><v>3</v></c></row>",
         {"||", "|#1|#2", "#3||"}},
        {"<row><c r=\"A3\"><v>1</v></c></row><row><c><v>2</v></c></row>", {"||", "||", "#1||", "#2||"}},
        {"<row r=\"2\"><c r=\"B2\"><v>1</v></c><c r=\"A2\"><v>2</v></c></row><row r=\"1\"><c><v>3</v></c></row>",
         {"#3||", "#2|#1|"}},
        {"<row r=\"1\"><c r=\"A1\"><v>1</v></c></row><row r=\"1\"><c r=\"A1\"><v>2</v></c></row>", {"#2||"}}};
    for (const auto& [rows, expected] : cases) EXPECT_EQ(Read(XlsxFile().SheetXml("F", rows), 3), expected) << rows;
}

TEST_F(XlsxWorkbookTest, CellsOutsideTheSheetAreEmpty) {
    XlsxFile().SheetXml("F", "<row r=\"1048576\"><c r=\"XFD1048576\"><v>1</v></c></row>").Write(path_);
    const auto workbook = OpenedWorkbook(path_);
    const files::Worksheet& sheet = workbook->Sheet(1);
    EXPECT_EQ(sheet.LastRow(), 1048576U);
    EXPECT_EQ(Marked(sheet.Cell(1048576, 16384)), "#1");
    for (const auto& [row, column] :
         {std::pair{0U, 0U}, {0U, 1U}, {1U, 0U}, {1048577U, 1U}, {1U, 16385U}, {1U, 81920U}}) {
        EXPECT_TRUE(files::IsEmpty(sheet.Cell(row, column)));
    }
}

TEST_F(XlsxWorkbookTest, SheetsFollowTheWorkbookNotTheParts) {
    const std::string types = "http://schemas.openxmlformats.org/officeDocument/2006/relationships/";
    const auto relation = [&](const std::string& id, const std::string& kind, const std::string& target) {
        return "<Relationship Id=\"" + id + "\" Type=\"" + types + kind + "\" Target=\"" + target + "\"/>";
    };
    XlsxFile file;
    file.Sheet("a", {{"primo"}}).Sheet("b", {{"secondo"}}).Sheet("c", {{"terzo"}});
    file.Part(
        "xl/workbook.xml",
        "<x:workbook xmlns:x=\"m\" xmlns:q=\"o\"><x:sheets><x:sheet name=\"1\" state=\"hidden\" q:id=\"C\"/><x:sheet "
        "name=\"2\" q:id=\"G\"/><x:sheet name=\"3\" q:id=\"B\"/><x:sheet name=\"4\" q:id=\"A\"/><x:sheet "
        "name=\"5\" q:id=\"A\"/></x:sheets></x:workbook>");
    file.Part("xl/_rels/workbook.xml.rels",
              "<Relationships>" + relation("A", "worksheet", "/xl/worksheets/sheet1.xml") +
                  relation("B", "worksheet", "../xl/./Worksheets\\sheet2.xml") +
                  relation("C", "worksheet", "worksheets/sheet3.xml") + relation("G", "chartsheet", "charts/none.xml") +
                  relation("T", "sharedStrings", "sharedStrings.xml") + "</Relationships>");
    file.Write(path_);
    const auto workbook = OpenedWorkbook(path_);
    ASSERT_EQ(workbook->WorksheetCount(), 4);
    Lines first;
    for (int number = 1; number <= 4; ++number) first.push_back(Marked(workbook->Sheet(number).Cell(1, 1)));
    EXPECT_EQ(first, (Lines{"\"terzo", "\"secondo", "\"primo", "\"primo"}));
    EXPECT_EQ(&workbook->Sheet(1), &workbook->Sheet(1));
}

TEST_F(XlsxWorkbookTest, OtherWritersWays) {
    XlsxFile file;
    file.SheetXml("F", "").Part("xl/worksheets/sheet1.xml",
                                "\xEF\xBB\xBF<?xml version='1.0'?><!-- <row> --><x:worksheet xmlns:x='m'><x:dimension "
                                "ref='A1:Z99'/><x:sheetData note='>'>\n<x:row r='1'>\n<x:c r='A1' t='inlineStr'><x:is>"
                                "<x:t>uno</x:t></x:is></x:c></x:row></x:sheetData><x:controls><xdr:row>5</xdr:row>"
                                "</x:controls></x:worksheet>\n");
    EXPECT_EQ(Read(file, 2), Lines{"\"uno|"});
    file.Without("xl/styles.xml").Without("xl/_rels/none").Without("_rels/.rels");
    file.Part("xl/_rels/workbook.xml.rels",
              "<Relationships><Relationship Id=\"rId1\" Type=\"http://purl.oclc.org/ooxml/officeDocument/relationships/"
              "worksheet\" Target=\"worksheets/sheet1.xml\"/></Relationships>");
    EXPECT_EQ(Read(file, 1), Lines{"\"uno"});
}

}  // namespace

}  // namespace vlm::test
