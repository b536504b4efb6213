#include <gtest/gtest.h>
#include <limits>

#include "databases/TSqlWriter.h"
#include "values/Error.h"

namespace vlm::host {
namespace {

using Cell = DatabaseWriter::Cell;

constexpr Column kText = Text("C", 50), kMoment = Moment("C"), kMoney = Money("C"), kBit = Bit("C"), kInt = Int("C");

TEST(TSqlLiteral, SaysEachValueAsItsColumnTakesIt) {
    const auto units = [](std::int64_t count) { return Currency::FromUnits(count); };
    const struct {
        Cell cell;
        Column column;
        const char* literal;
    } cases[] = {
        {nullptr, kText, "NULL"},
        {nullptr, kMoment, "NULL"},
        {OrNull(0), kMoment, "NULL"},
        {OrNull(""), kText, "NULL"},
        {"", kText, "''"},
        {"Rossi", kText, "'Rossi'"},
        {"D'Amico", kText, "'D''Amico'"},
        {"'", kText, "''''"},
        {"Cantù", kText, "N'Cantù'"},
        {"Nicolò D'Angelo", kText, "N'Nicolò D''Angelo'"},
        {"2011-03-01", kText, "'2011-03-01'"},
        {"082053", kText, "'082053'"},
        {82053, kText, "'82053'"},
        {"2011-03-01", kMoment, "'20110301'"},
        {"2011-03-01 00:00:00", kMoment, "'20110301'"},
        {"2011-03-31 08:05:09", kMoment, "'20110331 08:05:09'"},
        {"1912-12-31 23:59:00", kMoment, "'19121231 23:59:00'"},
        {units(0), kMoney, "0.0000"},
        {units(123400), kMoney, "12.3400"},
        {units(1), kMoney, "0.0001"},
        {units(-1), kMoney, "-0.0001"},
        {units(-361500), kMoney, "-36.1500"},
        {units(12345678901234567), kMoney, "1234567890123.4567"},
        {units(std::numeric_limits<std::int64_t>::max()), kMoney, "922337203685477.5807"},
        {units(std::numeric_limits<std::int64_t>::min()), kMoney, "-922337203685477.5808"},
        {12, kMoney, "12.0000"},
        {true, kBit, "1"},
        {0, kBit, "0"},
        {7, kBit, "1"},
        {-5, kInt, "-5"},
        {32767, SmallInt("C"), "32767"},
        {9007199254740993, kInt, "9007199254740993"},
    };
    for (const auto& each : cases) EXPECT_EQ(TSqlLiteral(each.cell, each.column), each.literal);
}

TEST(TSqlLiteral, RefusesWhatAColumnCannotHold) {
    const struct {
        Cell cell;
        Column column;
    } cases[] = {{nullptr, Key("C")}, {"01/03/2011", kMoment}, {"", kMoment}, {20110301, kMoment},
                 {"12", kInt},        {"12.50", kMoney},       {"1", kBit},   {Currency(), kText},
                 {Currency(), kInt}};
    for (const auto& each : cases) {
        try {
            ADD_FAILURE() << TSqlLiteral(each.cell, each.column);
        } catch (const Error& error) {
            EXPECT_STREQ(error.what(), "Valore non valido per la colonna C.");
        }
    }
}

}  // namespace
}  // namespace vlm::host
