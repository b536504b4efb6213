#include "WorkbookTest.h"
#include "values/Utf8.h"
#include "workbooks/CellReference.h"
#include "workbooks/CellStyles.h"
#include "workbooks/Workbook.h"

namespace vlm::files {

namespace {

TEST(SheetValueTest, TextIsWhatAutomationMakesOfACell) {
    const SheetValue values[] = {SheetValue(), "Perché", 12.0, 12.5, -0.0, 12345678901.0, 999999999999999.0, 0.1 + 0.2};
    const SheetValue others[] = {true,   false, Date(40643), Date(40643.5), Date(0.75), Date(40643 + 86399.0 / 86400),
                                 Date(0)};
    std::string texts;
    for (const SheetValue& value : values) texts += TextOf(value) + '|';
    for (const SheetValue& value : others) texts += TextOf(value) + '|';
    EXPECT_EQ(texts,
              "|Perché|12|12,5|0|12345678901|999999999999999|0,3|Vero|Falso|10/04/2011|10/04/2011 12:00:00|"
              "18:00:00|10/04/2011 23:59:59|30/12/1899|");
}

TEST(SheetValueTest, ReferencesStandInsideASheet) {
    const std::vector<std::pair<std::string, std::uint32_t>> cases = {{"A", 1},   {"z", 26},   {"AA", 27},
                                                                      {"aB", 28}, {"IV", 256}, {"XFD", 16384}};
    for (const auto& [letters, number] : cases) {
        EXPECT_EQ(ColumnNumber(letters), number) << letters;
        EXPECT_EQ(CellName({7, number}), text::ToUpper(letters) + "7");
    }
    for (const char* const wrong : {"", "XFE", "AAAA", "1", "A1", "À", " A", "A ", "@", "["}) {
        EXPECT_FALSE(ColumnNumber(wrong)) << wrong;
    }
    const auto place = ParseCellReference("ab1048576");
    EXPECT_TRUE(place && place->column == 28U && place->row == 1048576U);
    for (const char* const wrong : {"", "A", "1", "A0", "A1048577", "A4294967297", "XFE1", "A1B", "A-1", "A 1", "$A$1",
                                    "A99999999999999999999"}) {
        EXPECT_FALSE(ParseCellReference(wrong)) << wrong;
    }
}

TEST(SheetValueTest, FormatsThatShowADateOrATime) {
    for (const char* const date : {"dd/mm/yyyy", "D-MMM-YY", "h:mm", "[h]:mm", "[ss]", "mm:ss.0",
                                   "[$-410]d mmmm yyyy;@", "\"il\" dd", "[Red]yyyy", "yyyy\\-mm", "[$-F800]dddd"}) {
        EXPECT_TRUE(IsDateFormat(date)) << date;
    }
    for (const char* const number :
         {"General", "0", "0.00", "#,##0.00 \"dym\"", "[Red]0;[Blue]-0", "0\\d", "0_d", "0*d", "@", "", "[$-410]0",
          "0.00E+00", "\"days", "[Yellow", "0\\", "\"\"\"d\"0"}) {
        EXPECT_FALSE(IsDateFormat(number)) << number;
    }
}

TEST(SheetValueTest, NumbersOfADateStyleAreDatesInsideTheCalendar) {
    CellStyles from1900;
    from1900.AddStyle(14);
    CellStyles from1904;
    from1904.CountFrom1904(true);
    from1904.AddStyle(14);
    const std::vector<std::pair<double, std::string>> cases = {
        {40643, "@10/04/2011"}, {1, "@01/01/1900"},           {59, "@28/02/1900"},   {61, "@01/03/1900"},
        {0.5, "@12:00:00"},     {2958465, "@31/12/9999"},     {2958466, "#2958466"}, {-1, "#-1"},
        {1e300, "#1E+300"},     {1.5, "@01/01/1900 12:00:00"}};
    CellStyles known;  // by their numbers
    for (const std::uint32_t format : {14, 22, 27, 45, 58, 0, 13, 23, 49, 59}) known.AddStyle(format);
    for (std::size_t style = 0; style < 10; ++style) {
        EXPECT_EQ(test::Marked(known.ValueOf(40643, style)), style < 5 ? "@10/04/2011" : "#40643") << style;
    }
    for (const auto& [serial, expected] : cases) EXPECT_EQ(test::Marked(from1900.ValueOf(serial, 0)), expected);
    EXPECT_EQ(test::Marked(from1904.ValueOf(39181, 0)), "@10/04/2011");
    EXPECT_EQ(test::Marked(from1904.ValueOf(0, 0)), "@01/01/1904");
    EXPECT_EQ(test::Marked(from1900.ValueOf(40643, 1)), "#40643") << "a style that is not there";
}

}  // namespace

}  // namespace vlm::files
