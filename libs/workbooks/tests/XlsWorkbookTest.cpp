#include <gtest/gtest.h>

#include "SheetDump.h"
#include "XlsBytes.h"
#include "support/TempFolder.h"

namespace vlm::test {

namespace {

using Lines = std::vector<std::string>;

/// A formula whose result is told by eight bytes.
std::string Formula(std::uint32_t column, const std::string& result) {
    return BiffRecordOf(0x06, CellAt(0, column) + result + std::string(8, '\0'));
}

std::string Special(char kind, char value) { return std::string{kind, '\0', value, '\0', '\0', '\0'} + "\xFF\xFF"; }

/// A cell with the first of the shared texts.
const std::string kSharedCell = BiffRecordOf(0xFD, CellAt(0, 0) + Le32(0));

class XlsWorkbookTest : public testing::Test {
protected:
    Lines Read(const std::string& bytes, std::uint32_t columns) {
        WriteBytes(path_, bytes);
        return DumpOf(OpenedWorkbook(path_)->Sheet(1), columns);
    }
    /// The first row of a sheet of records.
    std::string Row(const std::string& records, const std::string& globals = {}) {
        return Read(XlsOf({{records}}, globals), 3).at(0);
    }

    TempFolder folder_;
    const std::string path_ = folder_ / "pazienti.xlsx";  // the extension tells nothing
};

/// In a stream of its own, with days from 1904, in the file's mini stream, of the version before.
TEST_F(XlsWorkbookTest, ValuesComeBackAsTheyWereWritten) {
    EXPECT_EQ(Read(ReadBytes(DataFile("values.xls")), 4), ValuesShown());
    const auto shown = [](const std::string& name, const std::string& day) {
        return Lines{"\"Cognome|\"Nato il|#12,5|?Vero", "|||", '"' + name + '|' + day + " 12:00:00|#-7|?Falso",
                     "\"x|||"};
    };
    const std::string seeds = std::string(kSourceFolder) + "/fuzz/corpus/workbook/";
    EXPECT_EQ(Read(ReadBytes(seeds + "long.xls"), 4), shown("D'Arrigo", "@11/04/2015"));
    EXPECT_EQ(Read(ReadBytes(seeds + "mini.xls"), 4), shown("D'Arrigo", "@10/04/2011"));
    std::string accented = ReadBytes(seeds + "version5.xls");
    accented.replace(accented.find("D'A"), 3, "D'\xC0");
    EXPECT_EQ(Read(accented, 4), shown("D'Àrrigo", "@10/04/2011"));
}

/// Files above 7 MB list the sectors of their table outside the header too.
TEST_F(XlsWorkbookTest, TheListOfTheTableMayStandInSectorsOfItsOwn) {
    std::string bytes = XlsOf({{BiffRecordOf(0x27E, CellAt(0, 0) + Le32((7 << 2) | 2))}});
    const auto end = static_cast<std::uint32_t>(bytes.size() / kSector - 1);
    bytes.replace(76, 4, Le32(kFree)).replace(68, 4, Le32(end));
    for (const std::uint32_t next : {end + 1, kLastOfChain}) {
        std::string list = Le32(next == kLastOfChain ? 0 : kFree);
        while (list.size() < kSector - 4) list += Le32(kFree);
        bytes += list + Le32(next);
    }
    EXPECT_EQ(Read(bytes, 1), Lines{"#7"});
}

TEST_F(XlsWorkbookTest, TextsGoOnInFurtherRecordsAtAnyCharacter) {
    const std::u16string text = u"cognome 7919 però";
    for (std::size_t cut = 0; cut < text.size(); ++cut) {
        for (const bool wideFirst : {false, true}) {
            for (const bool wideThen : {false, true}) {
                std::string head = Le16(static_cast<std::uint32_t>(text.size())) + (wideFirst ? '\1' : '\0'), rest;
                rest += wideThen ? '\1' : '\0';
                for (std::size_t i = 0; i < text.size(); ++i) {
                    const std::string unit = Le16(text[i]);
                    (i < cut ? head : rest) += unit.substr(0, (i < cut ? wideFirst : wideThen) ? 2 : 1);
                }
                const std::string next = Le16(1) + '\1' + Le16(0x141);  // the record goes on with another text
                const std::string list = BiffRecordOf(0xFC, Le32(2) + Le32(2) + head) + BiffRecordOf(0x3C, rest + next);
                EXPECT_EQ(Row(kSharedCell + BiffRecordOf(0xFD, CellAt(0, 1) + Le32(1)), list),
                          "\"cognome 7919 però|\"Ł|")
                    << cut << wideFirst << wideThen;
            }
        }
    }
}

TEST_F(XlsWorkbookTest, TextsOfTheListMayHaveRunsAndPhonetics) {
    const std::string rich = Le16(4) + '\x0C' + Le16(1) + Le32(6) + "Ros" + 's' + std::string(4, '\1') + "phonet";
    const std::string wide = Le16(2) + '\x01' + Le16(0xD800) + Le16('i'), pair = Le16(2) + '\1' + Le16(0xD834);
    EXPECT_EQ(Row(kSharedCell + BiffRecordOf(0xFD, CellAt(0, 1) + Le32(1)) + BiffRecordOf(0xFD, CellAt(0, 2) + Le32(2)),
                  BiffRecordOf(0xFC, Le32(9) + Le32(9) + rich + wide + pair + Le16(0xDD1E))),
              "\"Ross|\"\xEF\xBF\xBDi|\"𝄞");
}

TEST_F(XlsWorkbookTest, EveryKindOfCell) {
    const std::string text = Le16(3) + '\0' + "uno", at = CellAt(0, 0);
    const std::vector<std::pair<std::string, std::string>> cases = {
        {BiffRecordOf(0x204, at + text), "\"uno||"},
        {BiffRecordOf(0xD6, at + text + Le16(0)), "\"uno||"},
        {BiffRecordOf(0x204, at + Le16(3) + '\0' + 'u') + BiffRecordOf(0x3C, '\1' + Le16('n') + Le16(0x161)),
         "\"unš||"},
        {BiffRecordOf(0x27E, at + Le32((1250 << 2) | 3)), "#12,5||"},
        {BiffRecordOf(0x27E, at + Le32(0x40290000)), "#12,5||"},
        {BiffRecordOf(0x27E, at + Le32(0x40290001)), "#0,125||"},
        {BiffRecordOf(0x27E, at + Le32(static_cast<std::uint32_t>(-7 * 4) | 2)), "#-7||"},
        {BiffRecordOf(0xBD, CellAt(0, 1) + Le32((5 << 2) | 2) + Le16(0) + Le32((7 << 2) | 2) + Le16(2)), "|#5|#7"},
        {BiffRecordOf(0x205, at + "\1" + '\0') + BiffRecordOf(0x205, CellAt(0, 1) + "\x2A\1") +
             BiffRecordOf(0x205, CellAt(0, 2) + "\x17\1"),
         "?Vero|\"#N/D|\"#RIF!"},
        {BiffRecordOf(0x201, at), "||"},
        {BiffRecordOf(0xBE, at + Le16(0) + Le16(1)), "||"},
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
        records += BiffRecordOf(0x203, CellAt(0, style, style) + LeDouble(40643));
    }
    for (const bool version5 : {false, true}) {
        std::string globals;
        std::uint32_t format = 164;
        for (const std::string code : {"dd/mm/yyyy", "[Red]0.00", "[h]:mm"}) {
            const auto length = static_cast<std::uint32_t>(code.size());
            globals += BiffRecordOf(
                0x41E,
                Le16(format++) + (version5 ? std::string(1, static_cast<char>(length)) : Le16(length) + '\0') + code);
        }
        for (const std::uint32_t each : {0, 14, 164, 165, 166}) globals += BiffRecordOf(0xE0, Le16(0) + Le16(each));
        EXPECT_EQ(Read(XlsOf({{records}}, globals, version5), 6),
                  Lines{"#40643|@10/04/2011|@10/04/2011|#40643|@10/04/2011|#40643"});
    }
}

TEST_F(XlsWorkbookTest, SheetsChartsAndWhatLiesInsideASheet) {
    const std::string one = BiffRecordOf(0x27E, CellAt(2, 0) + Le32((1 << 2) | 2));
    const std::string chart = BiffRecordOf(0x809, Le16(0x600) + Le16(0x20)) +
                              BiffRecordOf(0x203, CellAt(9, 9) + LeDouble(9)) + BiffRecordOf(0x0A, "");
    WriteBytes(path_, XlsOf({{chart, 2}, {one + chart}, {"", 6}, {}}));
    const auto workbook = OpenedWorkbook(path_);
    ASSERT_EQ(workbook->WorksheetCount(), 2);
    EXPECT_EQ(DumpOf(workbook->Sheet(1), 1), (Lines{"", "", "#1"}));
    EXPECT_EQ(workbook->Sheet(2).LastRow(), 0U);
}

}  // namespace

}  // namespace vlm::test
