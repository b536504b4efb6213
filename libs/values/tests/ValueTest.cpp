#include <gtest/gtest.h>
#include <vector>

#include "values/Error.h"
#include "values/Value.h"

namespace vlm::data::testing {
namespace {

TEST(Value, TextAndNumberForms) {
    const Date noon(40633.5);
    const struct {
        Value value;
        const char* text;
        double number;
    } cases[] = {
        {{}, "", 0},
        {true, "True", -1},
        {false, "False", 0},
        {std::int64_t{-12}, "-12", -12},
        {12.5, "12,5", 12.5},
        {Currency::FromUnits(-105000), "-10,5", -10.5},
        {Date(40633), "31/03/2011", 40633},
        {noon, "31/03/2011 12:00:00", 40633.5},
        {std::string("1.234,5"), "1.234,5", 1234.5},
        {std::string("12abc"), "12abc", 0},
    };
    for (const auto& each : cases) {
        EXPECT_EQ(TextOf(each.value), each.text);
        EXPECT_EQ(NumberOf(each.value), each.number) << each.text;
    }
    EXPECT_EQ(AmountOf(std::string("2,5"), "Importo").Units(), 25000);
    EXPECT_EQ(*DateOf(std::string("2011-03-31"), "Giorno"), Date(40633));
    EXPECT_FALSE(DateOf({}, "Giorno"));
    EXPECT_THROW(AmountOf(std::string("x"), "Importo"), TypeMismatchError);
    EXPECT_THROW(DateOf(1e9, "Giorno"), TypeMismatchError);
}

TEST(Value, OrdersNullThenNumbersThenTexts) {
    const std::vector<Value> ascending = {
        {},
        true,
        std::int64_t{0},
        0.5,
        Currency::FromUnits(6000),
        std::int64_t{9007199254740992},
        std::int64_t{9007199254740993},
        std::string("Èboli"),
        std::string("èBOLJ"),
    };
    for (std::size_t left = 0; left < ascending.size(); ++left) {
        for (std::size_t right = 0; right < ascending.size(); ++right) {
            const int expected = left < right ? -1 : left > right ? 1 : 0;
            const int order = Compare(ascending[left], ascending[right]);
            EXPECT_EQ((order > 0) - (order < 0), expected) << left << " and " << right;
        }
    }
    EXPECT_EQ(Compare(std::int64_t{40633}, Date(40633)), 0);
    EXPECT_EQ(Compare(std::string("CANTÙ "), std::string("cantù")), 0);
}

}  // namespace
}  // namespace vlm::data::testing
