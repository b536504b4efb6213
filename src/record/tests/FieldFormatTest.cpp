#include <gtest/gtest.h>

#include "record/FieldFormat.h"
#include "support/Words.h"
#include "values/DateText.h"

namespace vlm {
namespace {

constexpr FieldFormat kCommon(kCommonFields);
constexpr FieldFormat kPuglia(kPugliaFields);

data::Value Money(double value) { return Currency::FromDouble(value); }

TEST(FieldFormatTest, WritesEveryKindInBothVariants) {
    using Case = std::tuple<data::Value, int, FieldMode, const char*, const char*>;
    const data::Value day = *Date::FromYmd(2003, 2, 1);
    const data::Value none;
    for (const auto& [value, width, mode, common, puglia] : std::vector<Case>{
             {std::int64_t{7}, 2, FieldMode::Number, "07", "07"},
             {std::int64_t{123}, 2, FieldMode::Number, "23", "23"},
             {std::int64_t{0}, 3, FieldMode::Number, "000", "000"},
             {std::string(" 7 "), 4, FieldMode::Number, "0 7 ", "0007"},
             {std::string("Nicolò"), 8, FieldMode::Number, "00Nicolò", "00Nicolò"},
             {std::string("Rossi"), 3, FieldMode::Text, "Ros", "ROS"},
             {std::string("nicolò"), 6, FieldMode::Text, "nicolò", "NICOLÒ"},
             {std::string(), 3, FieldMode::Text, "", ""},
             {day, 8, FieldMode::Date, "01022003", "01022003"},
             {none, 8, FieldMode::Date, "", "00000000"},
             {Money(12.5), 7, FieldMode::Amount, "0012,50", "0012500"},
             {Money(12.5), 10, FieldMode::Amount, "0000012,50", "0000012500"},
             {Money(-12.5), 8, FieldMode::Amount, "-0012,50", "-0012500"},
             {Money(1234567.89), 7, FieldMode::Amount, "4567,89", "4567890"},
             {Money(0), 7, FieldMode::Amount, "0000,00", "0000000"},
             {Money(1234.5), 7, FieldMode::Amount, "1234,50", "1234500"},
             {Money(0.0055), 6, FieldMode::Amount, "000,01", "000006"},
         }) {
        EXPECT_EQ(kCommon.FormatField(value, width, mode), common);
        EXPECT_EQ(kPuglia.FormatField(value, width, mode), puglia);
    }
    const Currency amount = Currency::FromDouble(1234.5);
    EXPECT_EQ(test::Joined(kCommon.FormatAmount(amount), kPuglia.FormatAmount(amount)), "1.234,50|1.234,500|");
}

TEST(FieldFormatTest, ShowsAndReadsBack) {
    constexpr FieldMode kDate = FieldMode::Date, kAmount = FieldMode::Amount;
    EXPECT_EQ(test::Joined(kCommon.DisplayField("01022003", 8, kDate), kPuglia.DisplayField("01022003", 8, kDate),
                           kCommon.DisplayField("        ", 8, kDate), kPuglia.DisplayField("00000000", 8, kDate),
                           kCommon.DisplayField("1234,5", 10, kAmount), kCommon.DisplayField("1234,5", 5, kAmount),
                           kCommon.DisplayField("-0,5", 0, kAmount), kCommon.DisplayField("x", 3, FieldMode::Text)),
              "01/02/03|01/02/2003|  /  /  ||   1234,50|34,50|-0,50||");
    std::string units;
    for (const char* field : {"0001234,50", "-0012,50", "4567,89", "       ", "x", "5"}) {
        units += std::to_string(kCommon.ParseAmount(field).Units()) + " ";
    }
    EXPECT_EQ(units, "12345000 -125000 45678900 0 0 500 ");
    EXPECT_EQ(kPuglia.ParseAmount("0000012500"), Currency::FromDouble(12.5));
    EXPECT_EQ(kPuglia.ParseAmount("-000012345"), Currency::FromDouble(-12.345));
}

}  // namespace
}  // namespace vlm
