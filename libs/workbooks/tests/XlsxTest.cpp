#include <algorithm>

#include "WorkbookTest.h"
#include "support/Caught.h"

namespace vlm::test {

namespace {

class XlsxTest : public WorkbookTest {
protected:
    std::string Row(const std::string& cells) {
        XlsxFile file;
        file.SharedXml("<si><t>zero</t></si><si><t>uno</t></si>").SheetXml("F", "<row>" + cells + "</row>");
        return Read(file, 3).at(0);
    }
};

TEST_F(XlsxTest, ValuesComeBackAsTheyWereWritten) {
    EXPECT_EQ(Read(ReadBytes(DataFile("values.xlsx")), 4), ValuesShown());
    EXPECT_EQ(Read(ReadBytes(DataFile("from1904.xlsx")), 1), Lines{"@10/04/2011"});
}

TEST_F(XlsxTest, EveryKindOfCell) {
    const std::vector<std::pair<std::string, std::string>> cases = {
        {"<c t='s'><v>1</v></c>", "\"uno||"},
        {"<c t='s'><v> 0 </v></c>", "\"zero||"},
        {"<c><v>1.5E3</v></c>", "#1500||"},
        {"<c t='n'><v>-0.25</v></c>", "#-0,25||"},
        {"<c><f>A1+1</f><v>7</v></c>", "#7||"},
        {"<c t='str'><f>A1&amp;\"x\"</f><v>a &lt; b</v></c>", "\"a < b||"},
        {"<c t='str'><f>\"\"</f><v></v></c>", "\"||"},
        {"<c t='inlineStr'><is><t>in riga</t></is></c>", "\"in riga||"},
        {"<c t='b'><v>1</v></c><c t='b'><v>false</v></c>", "?Vero|?Falso|"},
        {"<c t='e'><v>#N/A</v></c><c t='e'><v>#DIV/0!</v></c><c t='e'><v>#REF!</v></c>", "\"#N/D|\"#DIV/0!|\"#RIF!"},
        {"<c t='d'><v>2011-04-10T06:00:00</v></c><c t='d'><v>mai</v></c>", "@10/04/2011 06:00:00|\"mai|"},
        {"<c s='1'/><c/><c><v/></c>", "||"},
        {"<c s='99'><v>40643</v></c>", "#40643||"},
        {"<c t='inlineStr'><is><t><![CDATA[<b>]]>&#xE8;<!-- c -->!</t></is></c>", "\"<b>è!||"}};
    for (const auto& [cells, expected] : cases) EXPECT_EQ(Row(cells), expected) << cells;
}

TEST_F(XlsxTest, TextsAreJoinedFromTheirRuns) {
    const std::vector<std::pair<std::string, std::string>> cases = {
        {"<r><t xml:space='preserve'>Maria </t></r><r><rPr><b/></rPr><t>Rossi</t></r>", "Maria Rossi"},
        {"<t>漢字</t><rPh sb='0' eb='2'><t>かんじ</t></rPh><phoneticPr fontId='1'/>", "漢字"},
        {"<t> \n in mezzo </t>", "in mezzo"},
        {"<t xml:space='preserve'> </t>", " "},
        {"<t>a_x000D_b_x005F_x000D_</t>", "a\rb_x000D_"},
        {"<t>_x00_x41_xZZZZ__x0041_</t>", "_x00_x41_xZZZZ_A"},
        {"<t/>", ""},
        {"", ""}};
    for (const auto& [item, expected] : cases) {
        EXPECT_EQ(Row("<c t='inlineStr'><is>" + item + "</is></c>"), '"' + expected + "||") << item;
        XlsxFile shared;
        shared.SharedXml("<si>" + item + "</si>").SheetXml("F", "<row><c t='s'><v>0</v></c></row>");
        EXPECT_EQ(Read(shared, 1), Lines{'"' + expected}) << item;
    }
}

TEST_F(XlsxTest, DatesAreNumbersOfADateStyle) {
    XlsxFile file;
    file.Part("xl/styles.xml",
              "<styleSheet><numFmts><numFmt numFmtId='164' formatCode='dd/mm/yyyy'/><numFmt numFmtId='165' "
              "formatCode='&quot;dym&quot; 0'/></numFmts><cellStyleXfs><xf numFmtId='14'/></cellStyleXfs><cellXfs>"
              "<xf numFmtId='0'/><xf numFmtId='164'/><xf numFmtId='165'/><xf numFmtId='22'/></cellXfs></styleSheet>");
    std::string row;
    for (const char style : {'0', '1', '2', '3'}) row += std::string("<c s='") + style + "'><v>40643</v></c>";
    EXPECT_EQ(Read(file.SheetXml("F", "<row>" + row + "</row>"), 4), Lines{"#40643|@10/04/2011|#40643|@10/04/2011"});
}

TEST_F(XlsxTest, GapsAndOrderOfRowsAndCells) {
    const std::vector<std::tuple<std::string, Lines>> cases = {
        {"", {}},
        {"<row r='9'/>", {}},
        {"<row><c r='A2' s='1'/></row>", {"||", "||"}},
        {"<row r='2'><c r='C2'><v>1</v></c></row>", {"||", "||#1"}},
        {"<row r='2'><c r='B2'><v>1</v></c><c><v>2</v></c></row><row><c><v>3</v></c></row>", {"||", "|#1|#2", "#3||"}},
        {"<row><c r='A3'><v>1</v></c></row><row><c><v>2</v></c></row>", {"||", "||", "#1||", "#2||"}},
        {"<row r='2'><c r='B2'><v>1</v></c><c r='A2'><v>2</v></c></row><row r='1'><c><v>3</v></c></row>",
         {"#3||", "#2|#1|"}},
        {"<row r='1'><c r='A1'><v>1</v></c></row><row r='1'><c r='A1'><v>2</v></c></row>", {"#2||"}}};
    for (const auto& [rows, expected] : cases) EXPECT_EQ(Read(XlsxFile().SheetXml("F", rows), 3), expected) << rows;
}

TEST_F(XlsxTest, CellsOutsideTheSheetAreEmpty) {
    const auto workbook = Open(XlsxFile().SheetXml("F", "<row r='1048576'><c r='XFD1048576'><v>1</v></c></row>"));
    const files::Worksheet& sheet = workbook->Sheet(1);
    EXPECT_EQ(sheet.LastRow(), 1048576U);
    EXPECT_EQ(Marked(sheet.Cell(1048576, 16384)), "#1");
    for (const auto& [row, column] :
         {std::pair{0U, 0U}, {0U, 1U}, {1U, 0U}, {1048577U, 1U}, {1U, 16385U}, {1U, 81920U}}) {
        EXPECT_TRUE(files::IsEmpty(sheet.Cell(row, column)));
    }
}

TEST_F(XlsxTest, SheetsFollowTheWorkbookNotTheParts) {
    const std::string types = "http://schemas.openxmlformats.org/officeDocument/2006/relationships/";
    const auto relation = [&](const std::string& id, const std::string& kind, const std::string& target) {
        return "<Relationship Id=\"" + id + "\" Type=\"" + types + kind + "\" Target=\"" + target + "\"/>";
    };
    XlsxFile file;
    file.Sheet("a", {{"primo"}}).Sheet("b", {{"secondo"}}).Sheet("c", {{"terzo"}});
    file.Part("xl/workbook.xml",
              "<x:workbook xmlns:x='m' xmlns:q='o'><x:sheets><x:sheet name='1' state='hidden' q:id='C'/><x:sheet "
              "name='2' q:id='G'/><x:sheet name='3' q:id='B'/><x:sheet name='4' q:id='A'/><x:sheet "
              "name='5' q:id='A'/></x:sheets></x:workbook>");
    file.Part("xl/_rels/workbook.xml.rels",
              "<Relationships>" + relation("A", "worksheet", "/xl/worksheets/sheet1.xml") +
                  relation("B", "worksheet", "../xl/./Worksheets\\sheet2.xml") +
                  relation("C", "worksheet", "worksheets/sheet3.xml") + relation("G", "chartsheet", "charts/none.xml") +
                  relation("T", "sharedStrings", "sharedStrings.xml") + "</Relationships>");
    const auto workbook = Open(file);
    ASSERT_EQ(workbook->WorksheetCount(), 4);
    Lines first;
    for (int number = 1; number <= 4; ++number) first.push_back(Marked(workbook->Sheet(number).Cell(1, 1)));
    EXPECT_EQ(first, (Lines{"\"terzo", "\"secondo", "\"primo", "\"primo"}));
    EXPECT_EQ(&workbook->Sheet(1), &workbook->Sheet(1));
    for (const int none : {0, 5, -1}) {
        EXPECT_EQ(CaughtText([&] { workbook->Sheet(none); }), "Il file " + path_ + " non contiene il foglio numero " +
                                                                  std::to_string(none) + ": i suoi fogli sono 4.");
    }
}

TEST_F(XlsxTest, OtherWritersWays) {
    XlsxFile file;
    file.SheetXml("F", "").Part("xl/worksheets/sheet1.xml",
                                "\xEF\xBB\xBF<?xml version='1.0'?><!-- <row> --><x:worksheet xmlns:x='m'><x:dimension "
                                "ref='A1:Z99'/><x:sheetData note='>'>\n<x:row r='1'>\n<x:c r='A1' t='inlineStr'><x:is>"
                                "<x:t>uno</x:t></x:is></x:c></x:row></x:sheetData><x:controls><xdr:row>5</xdr:row>"
                                "</x:controls></x:worksheet>\n");
    EXPECT_EQ(Read(file, 2), Lines{"\"uno|"});
    file.Without("xl/styles.xml").Without("xl/_rels/none").Without("_rels/.rels");
    file.Part("xl/_rels/workbook.xml.rels",
              "<Relationships><Relationship Id='rId1' Type=\"http://purl.oclc.org/ooxml/officeDocument/relationships/"
              "worksheet\" Target='worksheets/sheet1.xml'/></Relationships>");
    EXPECT_EQ(Read(file, 1), Lines{"\"uno"});
}

TEST_F(XlsxTest, FilesThatAreNoWorkbook) {
    const auto opened = [](const std::string& path) { files::DetectingOpener().Open(path); };
    EXPECT_EQ(CaughtText([&] { opened(path_); }), "Impossibile aprire il file " + path_ + ": percorso inesistente.");
    EXPECT_EQ(CaughtText([&] { opened(folder_.Folder("x")); }),
              "Impossibile aprire il file " + (folder_ / "x") + ": è una cartella.");
    const std::vector<std::pair<std::string, std::string>> cases = {
        {"", "il file è vuoto"},
        {"P", "il suo formato non è né xlsx né xls"},
        {"Cognome;Nome\r\n", "il suo formato non è né xlsx né xls"},
        {"PK\x03\x04", "l'archivio è incompleto o danneggiato"},
        {"\xD0\xCF\x11\xE0", "il file è incompleto o danneggiato"}};
    for (const auto& [bytes, reason] : cases) EXPECT_EQ(Fault(bytes), reason) << bytes;
}

TEST_F(XlsxTest, MissingAndBrokenParts) {
    const auto good = [] { return XlsxFile().Sheet("Foglio", {{"a"}}); };
    const std::string part = "xl/worksheets/sheet1.xml";
    const std::string head = "<worksheet><sheetData>";
    const std::string thePart = "la parte " + part, theBook = "la parte xl/workbook.xml";
    for (const std::string name :
         {"xl/workbook.xml", "xl/worksheets/sheet1.xml", "xl/sharedStrings.xml", "xl/styles.xml"}) {
        EXPECT_EQ(Fault(good().Without(name)), "manca la parte " + name);
    }
    for (const std::string end : {"<row><c/></row>", "<row><c/>", "<row><c r=\"A1", "<!-- "}) {
        EXPECT_EQ(Fault(good().Part(part, head + end)), thePart + " è incompleta") << end;
    }
    const std::vector<std::pair<XlsxFile, std::string>> cases = {
        {good().Without("xl/_rels/workbook.xml.rels"), "manca il foglio \"Foglio\""},
        {good().Part("xl/workbook.xml", ""), theBook + " non è XML valido"},
        {good().Part("xl/workbook.xml", "<workbook>"), theBook + " non è XML valido"},
        {good().Part("xl/workbook.xml", "<html/>"), theBook + " non è una cartella di lavoro"},
        {good().Part(part, ""), thePart + " è incompleta"},
        {good().Part(part, head + "<row><c></row></sheetData></worksheet>"), thePart + " non è XML valido"},
        {good().Part(part, "<chartsheet/>"), thePart + " non è del tipo atteso"},
        {good().Part(part, "<!DOCTYPE worksheet [<!ENTITY a \"b\">]>" + head + "</sheetData></worksheet>"),
         thePart + " contiene dichiarazioni che non sono ammesse"},
        {good().Part(part, "\xFF\xFE<"), thePart + " è scritta in una codifica non prevista"}};
    for (const auto& [file, reason] : cases) EXPECT_EQ(Fault(file), reason);
}

TEST_F(XlsxTest, BrokenCells) {
    const std::vector<std::pair<std::string, Lines>> cases = {
        {"una cella sta fuori dal foglio", {"<row><c r='XFD1'/><c/></row>", "<row r='1048576'/><row><c/></row>"}},
        {"la cella A1 rimanda a un testo che non c'è",
         {"<row><c t='s'><v>0</v></c></row>", "<row><c t='s'><v>-1</v></c></row>",
          "<row><c t='s'><v>4294967296</v></c></row>"}},
        {"la cella A1 non contiene un numero valido",
         {"<row><c><v>dodici</v></c></row>", "<row><c><v>1e999</v></c></row>", "<row><c><v>nan</v></c></row>"}},
        {"la cella B1 non contiene un valore logico valido", {"<row><c/><c t='b'><v>si</v></c></row>"}},
        {"la cella A1 è di un tipo non previsto", {"<row><c t='zz'><v>1</v></c></row>"}}};
    for (const auto& [reason, sheets] : cases) {
        for (const std::string& rows : sheets) EXPECT_EQ(Fault(XlsxFile().SheetXml("F", rows)), reason) << rows;
    }
    for (const std::string row : {"0", "1048577", "-1", "x"}) {
        EXPECT_EQ(Fault(XlsxFile().SheetXml("F", "<row r=\"" + row + "\"/>")),
                  "il riferimento di cella \"" + row + "\" non è valido");
    }
    for (const std::string cell : {"XFE1", "", "A3"}) {
        EXPECT_EQ(Fault(XlsxFile().SheetXml("F", "<row r='2'><c r=\"" + cell + "\"/></row>")),
                  "il riferimento di cella \"" + cell + "\" non è valido");
    }
}

TEST_F(XlsxTest, RelationsThatGoInCircles) {
    const std::vector<std::pair<std::string, std::string>> cases = {
        {"workbook.xml", "la parte xl/workbook.xml non è del tipo atteso"},
        {"_rels/workbook.xml.rels", "la parte xl/_rels/workbook.xml.rels non è del tipo atteso"},
        {"../../../../etc/passwd", "manca la parte etc/passwd"},
        {"", "manca la parte xl"},
        {"x\" TargetMode=\"External", "manca il foglio \"F\""}};
    for (const auto& [target, reason] : cases) {
        const std::string relations =
            "<Relationships><Relationship Id='rId1' Type='x/worksheet' Target=\"" + target + "\"/></Relationships>";
        EXPECT_EQ(Fault(XlsxFile().SheetXml("F", "").Part("xl/_rels/workbook.xml.rels", relations)), reason) << target;
    }
}

TEST_F(XlsxTest, EntitiesAreNotUnfolded) {
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
    EXPECT_EQ(Fault(inTexts), "la parte xl/sharedStrings.xml contiene dichiarazioni che non sono ammesse");
    EXPECT_EQ(Read(XlsxFile().SheetXml("F", "<row><c t='str'><v>&e29;&amp;</v></c></row>"), 1), Lines{"\"&e29;&"});
}

TEST_F(XlsxTest, PartsThatUnfoldBeyondMeasure) {
    const std::string half(20U << 20, 'x'), thePart = "la parte xl/worksheets/sheet1.xml";
    const std::vector<std::pair<XlsxFile, std::string>> cases = {
        {XlsxFile().SheetXml("F", std::string(40U << 20, ' ')), thePart + " si espande oltre misura"},
        {XlsxFile().SheetXml("F", "<row><c t='str'><v>" + half + "</v></c></row>"),
         thePart + " ha un elemento troppo grande"},
        {XlsxFile().SheetXml("F", "<!--" + half + "-->"), thePart + " ha un elemento troppo grande"},
        {XlsxFile().Part("xl/workbook.xml", "<workbook>" + half + "</workbook>"),
         "la parte xl/workbook.xml è troppo grande"},
        {XlsxFile().Part("xl/styles.xml", half), "la parte xl/styles.xml è troppo grande"},
        {XlsxFile().Part("_rels/.rels", half), "la parte _rels/.rels è troppo grande"}};
    for (const auto& [file, reason] : cases) EXPECT_EQ(Fault(file), reason);
}

}  // namespace

}  // namespace vlm::test
