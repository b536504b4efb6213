#include <gtest/gtest.h>

#include "SheetDump.h"
#include "XlsFile.h"
#include "support/TempFolder.h"

namespace vlm::test {

namespace {

using Lines = std::vector<std::string>;

std::string At(std::uint32_t row, std::uint32_t column, std::uint32_t style = 0) {
    return Le16(row) + Le16(column) + Le16(style);
}

/// A formula whose result is told by eight bytes.
std::string Formula(std::uint32_t column, const std::string& result) {
    return BiffRecordOf(0x06, At(0, column) + result + std::string(8, '\0'));
}

std::string Special(char kind, char value) { return std::string{kind, '\0', value, '\0', '\0', '\0'} + "\xFF\xFF"; }

class XlsWorkbookTest : public testing::Test {
protected:
    Lines Read(const XlsFile& file, std::uint32_t columns) {
        file.Write(path_);
        return DumpOf(OpenedWorkbook(path_)->Sheet(1), columns);
    }
    /// The first row of a sheet of records.
    std::string Row(const std::string& records, std::uint32_t columns = 3) {
        return Read(XlsFile().SheetRecords("F", records), columns).at(0);
    }

    TempFolder folder_;
    const std::string path_ = folder_ / "pazienti.xlsx";  // the extension tells nothing
};

const SheetRows kRows = {{"Cognome", "Nato il", "Età", "Attivo"},
                         {"D'Àrrigo", Date(20000), 56.5, true},
                         {},
                         {"Łódź 漢 𝄞", Date(40643.25), 12345678901.0, false},
                         {"", -7.0, 0.0, 123456.0}};
const Lines kShown = {"\"Cognome|\"Nato il|\"Età|\"Attivo", "\"D'Àrrigo|@03/10/1954|#56,5|?Vero", "|||",
                      "\"Łódź 漢 𝄞|@10/04/2011 06:00:00|#12345678901|?Falso", "\"|#-7|#0|#123456"};

TEST_F(XlsWorkbookTest, ValuesComeBackAsTheyWereWritten) {
    EXPECT_EQ(Read(XlsFile().Sheet("F", kRows), 4), kShown);
    EXPECT_EQ(Read(XlsFile({.mini = true}).Sheet("F", kRows), 4), kShown);
    EXPECT_EQ(Read(XlsFile({.from1904 = true}).Sheet("F", kRows), 4), kShown);
    Lines ansi = kShown;
    ansi[3] = "\"?ód? ? ?|@10/04/2011 06:00:00|#12345678901|?Falso";
    EXPECT_EQ(Read(XlsFile({.version5 = true}).Sheet("F", kRows), 4), ansi);
}

TEST_F(XlsWorkbookTest, LargeFilesListTheirTableInSectorsOfTheirOwn) {
    std::string filler;
    for (int i = 0; i < 2200; ++i) filler += BiffRecordOf(0x1234, std::string(8000, 'x'));
    EXPECT_EQ(Read(XlsFile().Global(filler).Sheet("F", kRows), 4), kShown);  // 17 MB, two such sectors
}

TEST_F(XlsWorkbookTest, TextsGoOnInFurtherRecordsAtAnyCharacter) {
    SheetRows rows;
    Lines shown;
    for (int i = 0; i < 20; ++i) {
        const std::string text = (i % 2 == 0 ? "cognome " : "ŁŁŁŁ 𝄞 ") + std::to_string(i * 7919);
        rows.push_back({text});
        shown.push_back('"' + text);
    }
    for (std::size_t size = 12; size < 60; ++size) {
        EXPECT_EQ(Read(XlsFile({.textRecordSize = size}).Sheet("F", rows), 1), shown) << size;
    }
}

TEST_F(XlsWorkbookTest, TextsOfTheListMayHaveRunsAndPhonetics) {
    const std::string rich = Le16(4) + '\x0C' + Le16(1) + Le32(6) + "Ros" + 's' + std::string(4, '\1') + "phonet";
    const std::string wide = Le16(2) + '\x01' + Le16(0xD800) + Le16('i');
    const XlsFile file =
        XlsFile()
            .Global(BiffRecordOf(0xFC, Le32(9) + Le32(9) + rich + wide))
            .SheetRecords("F", BiffRecordOf(0xFD, At(0, 0) + Le32(0)) + BiffRecordOf(0xFD, At(0, 1) + Le32(1)));
    EXPECT_EQ(Read(file, 2), Lines{"\"Ross|\"\xEF\xBF\xBDi"});
}

TEST_F(XlsWorkbookTest, EveryKindOfCell) {
    const std::string text = Le16(3) + '\0' + "uno";
    const std::vector<std::pair<std::string, std::string>> cases = {
        {BiffRecordOf(0x204, At(0, 0) + text), "\"uno||"},
        {BiffRecordOf(0xD6, At(0, 0) + text + Le16(0)), "\"uno||"},
        {BiffRecordOf(0x204, At(0, 0) + Le16(3) + '\0' + 'u') + BiffRecordOf(0x3C, '\1' + Le16('n') + Le16(0x161)),
         "\"unš||"},
        {BiffRecordOf(0x27E, At(0, 0) + Le32((1250 << 2) | 3)), "#12,5||"},
        {BiffRecordOf(0x27E, At(0, 0) + Le32(0x40290000)), "#12,5||"},
        {BiffRecordOf(0x27E, At(0, 0) + Le32(0x40290001)), "#0,125||"},
        {BiffRecordOf(0x27E, At(0, 0) + Le32(static_cast<std::uint32_t>(-7 * 4) | 2)), "#-7||"},
        {BiffRecordOf(0xBD,
                      Le16(0) + Le16(1) + Le16(0) + Le32((5 << 2) | 2) + Le16(1) + Le32((40643 << 2) | 2) + Le16(2)),
         "|#5|@10/04/2011"},
        {BiffRecordOf(0x205, At(0, 0) + "\1" + '\0') + BiffRecordOf(0x205, At(0, 1) + "\x2A\1") +
             BiffRecordOf(0x205, At(0, 2) + "\x17\1"),
         "?Vero|\"#N/D|\"#RIF!"},
        {BiffRecordOf(0x201, At(0, 0)), "||"},
        {BiffRecordOf(0xBE, At(0, 0) + Le16(0) + Le16(1)), "||"},
        {Formula(0, LeDouble(2.5)), "#2,5||"},
        {Formula(0, Special(0, 0)) + BiffRecordOf(0x207, text) + Formula(1, Special(3, 0)), "\"uno||"},
        {Formula(0, Special(0, 0)) + BiffRecordOf(0x4BC, "shared") + BiffRecordOf(0x207, text), "\"uno||"},
        {Formula(0, Special(1, 1)) + Formula(1, Special(1, 0)) + Formula(2, Special(2, 7)), "?Vero|?Falso|\"#DIV/0!"},
        {Formula(0, Special(0, 0)) + Formula(1, LeDouble(1)) + BiffRecordOf(0x207, text), "|#1|"}};
    for (const auto& [records, expected] : cases) EXPECT_EQ(Row(records), expected);
}

TEST_F(XlsWorkbookTest, DatesAreNumbersOfADateStyle) {
    std::string records;
    for (std::uint32_t style = 0; style < 6; ++style) {
        records += BiffRecordOf(0x203, At(0, style, style) + LeDouble(40643));
    }
    for (const bool version5 : {false, true}) {
        XlsFile file({.version5 = version5, .formats = {"dd/mm/yyyy", "[Red]0.00", "[h]:mm"}});
        file.SheetRecords("F", records);
        EXPECT_EQ(Read(file, 6), Lines{"#40643|@10/04/2011|@10/04/2011|#40643|@10/04/2011|#40643"});
    }
}

TEST_F(XlsWorkbookTest, SheetsChartsAndWhatLiesInsideASheet) {
    const std::string one = BiffRecordOf(0x27E, At(2, 0) + Le32((1 << 2) | 2));
    const std::string chart = BiffRecordOf(0x809, Le16(0x600) + Le16(0x20)) +
                              BiffRecordOf(0x203, At(9, 9) + LeDouble(9)) + BiffRecordOf(0x0A, "");
    XlsFile()
        .SheetRecords("G", chart, 2)
        .SheetRecords("a", one + chart)
        .SheetRecords("M", "", 6)
        .Sheet("b", {})
        .Write(path_);
    const auto workbook = OpenedWorkbook(path_);
    ASSERT_EQ(workbook->WorksheetCount(), 2);
    EXPECT_EQ(DumpOf(workbook->Sheet(1), 1), (Lines{"", "", "#1"}));
    EXPECT_EQ(workbook->Sheet(2).LastRow(), 0U);
}

}  // namespace

}  // namespace vlm::test
