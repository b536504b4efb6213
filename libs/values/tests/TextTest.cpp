#include <cmath>
#include <gtest/gtest.h>

#include "values/CodePage1252.h"
#include "values/DateText.h"
#include "values/Error.h"
#include "values/Number.h"
#include "values/TextPool.h"
#include "values/Utf8.h"

namespace vlm::text {
namespace {

TEST(Utf8Test, SlicesCountCharacters) {
    EXPECT_EQ(Left("àbcd", 2), "àb");
    EXPECT_EQ(Left("abàd", 2), "ab");
    EXPECT_EQ(Right("abcà€", 2), "à€");
    EXPECT_EQ(Mid("perché no", 6, 2), "é ");
    EXPECT_EQ(Mid("città", 9), "");
    EXPECT_EQ(Length("Nicolò è qui €😀"), 15U);
    EXPECT_EQ(Length("\xC3"), 1U);
    EXPECT_EQ(Left("a\xFF\xC3z", 3), "a\xFF\xC3");
}

TEST(Utf8Test, CapitalsOfAccentedLettersAndBack) {
    EXPECT_EQ(ToUpper("niccolò d'aà ñ ÿ š ß ÷ żółć ω ж"), "NICCOLÒ D'AÀ Ñ Ÿ Š ß ÷ ŻÓŁĆ Ω Ж");
    EXPECT_EQ(ToLower("NICCOLÒ Ÿ Š × ŻÓŁĆ Ω Ж"), "niccolò ÿ š × żółć ω ж");
    EXPECT_EQ(ToUpper("a\xFF"), "A\xFF");
    EXPECT_TRUE(EqualNoCase("CANTÙ  ", "cantù"));
    EXPECT_FALSE(EqualNoCase("cantu", "cantù"));
    EXPECT_LT(CompareNoCase("abc", "ABD"), 0);
    EXPECT_GT(CompareNoCase("abcd", "ABC"), 0);
}

TEST(CodePage1252Test, BothWaysAndWhatHasNoCode) {
    std::string all;
    for (int code = 0; code < 256; ++code) all += static_cast<char>(code);
    EXPECT_EQ(ToAnsi(FromAnsi(all)), all);
    EXPECT_EQ(ToAnsi("€ ‰ Žž œ ł 😀 \xC3"), "\x80 \x89 \x8E\x9E \x9C ? ? ?");
}

TEST(NumberTest, ReadsItalianAndPlainForms) {
    struct Case {
        const char* text;
        std::optional<double> number;
    };
    for (const Case& c : {Case{"1.234,50", 1234.5}, Case{"1234.5", 1234.5}, Case{"1.234", 1234.0}, Case{"12.34", 12.34},
                          Case{"1.234.567", 1234567.0}, Case{" -7 ", -7.0}, Case{"+0,5", 0.5}, Case{",5", 0.5},
                          Case{"082053", 82053.0}, Case{"1e3", 1000.0}, Case{"", std::nullopt}, Case{"-", std::nullopt},
                          Case{"12a", std::nullopt}, Case{"1,2,3", std::nullopt}, Case{"1.2.3", std::nullopt},
                          Case{"1234.567.8", std::nullopt}, Case{"nan", std::nullopt}, Case{"0x10", std::nullopt}}) {
        EXPECT_EQ(ParseNumber(c.text), c.number) << c.text;
    }
    EXPECT_EQ(ParseCurrency("922.337.203.685.477,5807"), Currency::FromUnits(INT64_MAX));
    EXPECT_THROW(ParseCurrency("922337203685477,5808"), OverflowError);
    EXPECT_EQ(ParseCurrency("0,00005"), Currency::FromUnits(0));
    EXPECT_EQ(ParseCurrency("0,00015"), Currency::FromUnits(2));
    EXPECT_EQ(ParseCurrency("-0,000150"), Currency::FromUnits(-2));
    EXPECT_EQ(ParseCurrency("0,0001500001"), Currency::FromUnits(2));
    EXPECT_EQ(ParseCurrency("0,00006"), Currency::FromUnits(1));
    EXPECT_EQ(ParseCurrency("0,000049999"), Currency::FromUnits(0));
    EXPECT_EQ(ParseCurrency("-0,00006"), Currency::FromUnits(-1));
    EXPECT_EQ(LeadingInteger(" 12a"), 12);
    EXPECT_EQ(LeadingInteger("a12"), 0);
}

TEST(NumberTest, MoneyIsExactAndNeverWraps) {
    EXPECT_EQ(Currency::FromDouble(0.00005).Units(), 0);
    EXPECT_EQ(Currency::FromDouble(0.00025).Units(), 2);
    EXPECT_EQ(Currency::FromDouble(0.00035).Units(), 4);
    EXPECT_EQ(Currency::FromDouble(-20.66).Units(), -206600);
    EXPECT_THROW(Currency::FromDouble(1e15), OverflowError);
    EXPECT_THROW(Currency::FromInteger(922337203685478), OverflowError);
    EXPECT_THROW(Currency::FromUnits(INT64_MAX) + Currency::FromUnits(1), OverflowError);
    EXPECT_THROW(-Currency::FromUnits(INT64_MIN), OverflowError);
    EXPECT_EQ(FormatDecimals(Currency::FromUnits(INT64_MIN), 2, true), "-922.337.203.685.477,58");
    EXPECT_EQ(FormatDecimals(Currency::FromUnits(12345678950), 2, true), "1.234.567,90");
    EXPECT_EQ(FormatDecimals(Currency::FromUnits(-50), 2, false), "-0,01");
    EXPECT_EQ(FormatDecimals(Currency::FromUnits(-49), 2, false), "0,00");
    EXPECT_EQ(NumberText(Currency::FromUnits(-125000)), "-12,5");
    EXPECT_EQ(NumberText(1234567.25), "1234567,25");
    EXPECT_EQ(NumberText(0.1 + 0.2), "0,3");
}

TEST(NumberTest, WidthsAreChecked) {
    EXPECT_EQ(ToInt16(2.5, "n"), 2);
    EXPECT_EQ(ToInt16(-32768.5, "n"), -32768);
    EXPECT_THROW(ToInt16(32767.5, "n"), OverflowError);
    EXPECT_THROW(ToInt32(2147483648.0, "n"), OverflowError);
    EXPECT_THROW(ToInt64(9223372036854775808.0, "n"), OverflowError);
    EXPECT_THROW(ToInt32(std::nan(""), "n"), OverflowError);
}

TEST(DateTest, SerialsAreAutomationDates) {
    struct Case {
        const char* iso;
        double serial;
    };
    for (const Case& c :
         {Case{"1899-12-30", 0}, Case{"1900-01-01", 2}, Case{"2011-03-15", 40617}, Case{"2000-02-29 12:00:00", 36585.5},
          Case{"1899-12-29 06:00:00", -1.25}, Case{"0100-01-01", -657434}, Case{"9999-12-31", 2958465}}) {
        const auto date = ParseIsoDate(c.iso);
        ASSERT_TRUE(date) << c.iso;
        EXPECT_EQ(date->Serial(), c.serial);
        EXPECT_EQ(IsoDate(*date), c.iso);
    }
    EXPECT_LT(*ParseIsoDate("1899-12-29 06:00:00"), *ParseIsoDate("1899-12-29 18:00:00"));
    for (const char* bad :
         {"2011-02-29", "2011-13-01", "2011-1-01", "2011-01-01x", "2011-01-01 24:00:00", "ieri", ""}) {
        EXPECT_FALSE(ParseIsoDate(bad)) << bad;
    }
}

TEST(DateTest, ItalianForms) {
    const Date date = *ParseIsoDate("2003-02-01 08:09:10");
    EXPECT_EQ(DdMmYyyy(date), "01022003");
    EXPECT_EQ(DdMmYyyySlashes(date), "01/02/2003");
    EXPECT_EQ(LongDate(date), "sabato 01 febbraio 2003");
    EXPECT_EQ(LongDate(Date(-1)), "venerdì 29 dicembre 1899");
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
