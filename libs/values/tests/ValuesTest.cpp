#include <cmath>
#include <gtest/gtest.h>

#include "support/Words.h"
#include "values/CodePage1252.h"
#include "values/DateText.h"
#include "values/Error.h"
#include "values/Number.h"
#include "values/TextPool.h"
#include "values/Utf8.h"
#include "values/Value.h"

namespace vlm::text {
namespace {

using test::Joined;

TEST(Utf8Test, SlicesCountCharacters) {
    EXPECT_EQ(Joined(Left("àbcd", 2), Left("abàd", 2), Right("abcà€", 2), Mid("perché no", 6, 2), Mid("città", 9),
                     Left("a\xFF\xC3z", 3), Length("Nicolò è qui €😀"), Length("\xC3")),
              "àb|ab|à€|é ||a\xFF\xC3|15|1|");
}

TEST(Utf8Test, CapitalsOfAccentedLettersAndBack) {
    EXPECT_EQ(ToUpper("niccolò d'aà ñ ÿ š ß ÷ żółć ω ж"), "NICCOLÒ D'AÀ Ñ Ÿ Š ß ÷ ŻÓŁĆ Ω Ж");
    EXPECT_EQ(ToLower("NICCOLÒ Ÿ Š × ŻÓŁĆ Ω Ж"), "niccolò ÿ š × żółć ω ж");
    EXPECT_EQ(ToUpper("a\xFF"), "A\xFF");
    EXPECT_EQ(Joined(EqualNoCase("CANTÙ  ", "cantù"), EqualNoCase("cantu", "cantù"), CompareNoCase("abc", "ABD") < 0,
                     CompareNoCase("abcd", "ABC") > 0),
              "1|0|1|1|");
}

TEST(CodePage1252Test, BothWaysAndWhatHasNoCode) {
    std::string all;
    for (int code = 0; code < 256; ++code) all += static_cast<char>(code);
    EXPECT_EQ(ToAnsi(FromAnsi(all)), all);
    EXPECT_EQ(ToAnsi("€ ‰ Žž œ ł 😀 \xC3"), "\x80 \x89 \x8E\x9E \x9C ? ? ?");
}

TEST(NumberTest, ReadsItalianAndPlainForms) {
    std::string numbers;
    for (const char* text :
         {"1.234,50", "1234.5", "1.234", "12.34", "1.234.567", " -7 ", "+0,5", ",5", "082053", "1e3"}) {
        numbers += NumberText(ParseNumber(text).value_or(NAN)) + ' ';
    }
    EXPECT_EQ(numbers, "1234,5 1234,5 1234 12,34 1234567 -7 0,5 0,5 82053 1000 ");
    for (const char* wrong : {"", "-", "12a", "1,2,3", "1.2.3", "1234.567.8", "nan", "0x10"}) {
        EXPECT_FALSE(ParseNumber(wrong)) << wrong;
    }
    std::string units;
    for (const char* amount : {"922.337.203.685.477,5807", "0,00005", "0,00015", "-0,000150", "0,0001500001", "0,00006",
                               "0,000049999", "-0,00006"}) {
        units += std::to_string(ParseCurrency(amount)->Units()) + ' ';
    }
    EXPECT_EQ(units, "9223372036854775807 0 2 -2 2 1 0 -1 ");
    EXPECT_THROW(ParseCurrency("922337203685477,5808"), OverflowError);
    EXPECT_EQ(LeadingInteger(" 12a"), 12);
    EXPECT_EQ(LeadingInteger("a12"), 0);
}

TEST(NumberTest, MoneyIsExactAndNeverWraps) {
    const auto units = [](double value) { return Currency::FromDouble(value).Units(); };
    EXPECT_EQ(Joined(units(0.00005), units(0.00025), units(0.00035), units(-20.66)), "0|2|4|-206600|");
    EXPECT_THROW(Currency::FromDouble(1e15), OverflowError);
    EXPECT_THROW(Currency::FromInteger(922337203685478), OverflowError);
    EXPECT_THROW(Currency::FromUnits(INT64_MAX) + Currency::FromUnits(1), OverflowError);
    EXPECT_THROW(-Currency::FromUnits(INT64_MIN), OverflowError);
    const auto shown = [](std::int64_t count, bool grouped) {
        return FormatDecimals(Currency::FromUnits(count), 2, grouped);
    };
    EXPECT_EQ(Joined(shown(INT64_MIN, true), shown(12345678950, true), shown(-50, false), shown(-49, false),
                     NumberText(Currency::FromUnits(-125000)), NumberText(1234567.25), NumberText(0.1 + 0.2)),
              "-922.337.203.685.477,58|1.234.567,90|-0,01|0,00|-12,5|1234567,25|0,3|");
}

TEST(NumberTest, WidthsAreChecked) {
    EXPECT_EQ(ToInt16(2.5, "n"), 2);
    EXPECT_EQ(ToInt16(-32768.5, "n"), -32768);
    EXPECT_THROW(ToInt16(32767.5, "n"), OverflowError);
    for (const double wide : {2147483648.0, std::nan("")}) EXPECT_THROW(ToInt32(wide, "n"), OverflowError);
    EXPECT_THROW(ToInt64(9223372036854775808.0, "n"), OverflowError);
}

TEST(DateTest, SerialsAreAutomationDates) {
    std::string serials;
    for (const char* iso : {"1899-12-30", "1900-01-01", "2011-03-15", "2000-02-29 12:00:00", "1899-12-29 06:00:00",
                            "0100-01-01", "9999-12-31"}) {
        const auto date = ParseIsoDate(iso);
        ASSERT_TRUE(date && IsoDate(*date) == iso) << iso;
        serials += NumberText(date->Serial()) + ' ';
    }
    EXPECT_EQ(serials, "0 2 40617 36585,5 -1,25 -657434 2958465 ");
    EXPECT_LT(*ParseIsoDate("1899-12-29 06:00:00"), *ParseIsoDate("1899-12-29 18:00:00"));
    for (const char* bad :
         {"2011-02-29", "2011-13-01", "2011-1-01", "2011-01-01x", "2011-01-01 24:00:00", "ieri", ""}) {
        EXPECT_FALSE(ParseIsoDate(bad)) << bad;
    }
}

TEST(DateTest, ItalianForms) {
    const Date date = *ParseIsoDate("2003-02-01 08:09:10");
    EXPECT_EQ(Joined(DdMmYyyy(date), DdMmYyyySlashes(date), LongDate(date), LongDate(Date(-1))),
              "01022003|01/02/2003|sabato 01 febbraio 2003|venerdì 29 dicembre 1899|");
    EXPECT_EQ(ParseItalianDate("1/2/2003"), Date::FromYmd(2003, 2, 1));
    for (const char* bad : {"31/02/2003", "1/2/03", "1//2003", "01022003", "2003/02/01", "1/2/2003/4"}) {
        EXPECT_FALSE(ParseItalianDate(bad)) << bad;
    }
}

TEST(TextPool, KeepsTextsUpToItsLimit) {
    TextPool pool(3 << 16);
    const std::string twoPages(70000, 'x');
    const std::uint32_t first = pool.Add(twoPages), none = pool.Add(""), last = pool.Add("città");
    EXPECT_THROW(pool.Add(twoPages), OverflowError);
    EXPECT_EQ(pool.At(first), twoPages);
    EXPECT_EQ(pool.At(none), "");
    EXPECT_EQ(pool.At(last), "città");
}

}  // namespace
}  // namespace vlm::text

namespace vlm::data {
namespace {

TEST(Value, TextAndNumberForms) {
    const Currency amount = Currency::FromUnits(-105000);
    std::string texts;
    for (const Value& value : std::initializer_list<Value>{Value(), true, false, -12, 12.5, amount, Date(40633),
                                                           Date(40633.5), "1.234,5", "12abc"}) {
        texts += TextOf(value) + '=' + TextOf(NumberOf(value)) + ' ';
    }
    EXPECT_EQ(texts,
              "=0 True=-1 False=0 -12=-12 12,5=12,5 -10,5=-10,5 31/03/2011=40633 31/03/2011 12:00:00=40633,5 "
              "1.234,5=1234,5 12abc=0 ");
    EXPECT_EQ(AmountOf("2,5", "Importo").Units(), 25000);
    EXPECT_EQ(*DateOf("2011-03-31", "Giorno"), Date(40633));
    EXPECT_FALSE(DateOf({}, "Giorno"));
    EXPECT_THROW(AmountOf("x", "Importo"), TypeMismatchError);
    EXPECT_THROW(DateOf(1e9, "Giorno"), TypeMismatchError);
}

TEST(Value, OrdersNullThenNumbersThenTexts) {
    const std::int64_t large = 9007199254740992;  // no double tells it from the next
    const std::vector<Value> ascending = {Value(), true,      0,       0.5,    Currency::FromUnits(6000),
                                          large,   large + 1, "Èboli", "èBOLJ"};
    for (std::size_t left = 0; left < ascending.size(); ++left) {
        for (std::size_t right = 0; right < ascending.size(); ++right) {
            const int expected = left < right ? -1 : left > right ? 1 : 0;
            const int order = Compare(ascending[left], ascending[right]);
            EXPECT_EQ((order > 0) - (order < 0), expected) << left << " and " << right;
        }
    }
    EXPECT_EQ(Compare(40633, Date(40633)), 0);
    EXPECT_EQ(Compare("CANTÙ ", "cantù"), 0);
}

}  // namespace
}  // namespace vlm::data
