#include <gtest/gtest.h>

#include "database/MemoryRecordset.h"
#include "record/Columns.h"
#include "record/Layout.h"
#include "values/Error.h"

namespace vlm {
namespace {

struct Parcel {
    FixedText<5> Code;
    std::string Name;
    std::int16_t Pieces = 0;
    Currency Price;
    std::optional<Date> Sent;
    bool IsLast = false;
};

constexpr Layout kLabel(40, kCommonFields,  //
                        Field(1, 5, FieldRule::Text, "Code", &Parcel::Code, kAsItStands),
                        Field(6, 6, FieldRule::Text, "Name",
                              Derived{&Parcel::Name, [](const Parcel& parcel) { return text::ToUpper(parcel.Name); }},
                              kTrimmed),
                        Blank(12, 2),  //
                        Field(14, 3, FieldRule::Number, "Pieces", &Parcel::Pieces, kReadAsNumber),
                        Field(17, 8, FieldRule::Amount, "Price",
                              Only{&Parcel::Price, [](const Parcel& parcel) { return parcel.IsLast; }}, kReadAsAmount),
                        Constant(25, 2, FieldRule::Number, "7"), Field(27, 8, FieldRule::Date, "Sent", &Parcel::Sent),
                        Field(35, 6, FieldRule::RightText, "Code", &Parcel::Code));

constexpr auto kTwice = [](std::int16_t& member, const data::Recordset& rows, int at) {
    member = static_cast<std::int16_t>(2 * rows.Int16Of(at));
};
constexpr auto kLastIfNamed = [](Parcel& parcel, const data::Recordset& rows, int at) {
    parcel.IsLast = rows.TextOf(at) == parcel.Name;
};
constexpr std::tuple kColumns{Column{"Codice", &Parcel::Code}, Column{"Nome", &Parcel::Name},
                              Column{"Colli", &Parcel::Pieces, kTwice}, Column{"Prezzo", &Parcel::Price},
                              Column{"Ultimo", &Parcel::IsLast, kLastIfNamed}};

std::unique_ptr<data::MemoryRecordset> Rows(const std::vector<std::string>& names) {
    auto rows = std::make_unique<data::MemoryRecordset>();
    for (const std::string& name : names) rows->AppendColumn(name, data::FieldType::Text);
    rows->Open();
    rows->AddNew();
    for (const auto& [name, cell] : std::vector<std::pair<std::string, std::string>>{
             {"Codice", "A1"}, {"Nome", "Nicolò"}, {"Colli", "3"}, {"Prezzo", "12,5"}, {"Ultimo", "Nicolò"}}) {
        if (std::count(names.begin(), names.end(), name) > 0) rows->SetValue(name, cell);
    }
    rows->Update();
    rows->MoveFirst();
    return rows;
}

TEST(LayoutTest, ALineIsWrittenReadBackAndCutFromOneTable) {
    Parcel parcel;
    const auto rows = Rows({"Ultimo", "Prezzo", "Colli", "Nome", "Codice"});
    BoundColumns<kColumns>(*rows).Read(parcel, *rows);
    parcel.Sent = Date::FromYmd(2011, 3, 9);
    std::string line;
    WriteLine<kLabel>(line, parcel);
    EXPECT_EQ(line, "A1   NICOLÒ  00600012,500709032011 A1   ");
    const auto fields = CutLine<kLabel>(line);
    EXPECT_EQ(std::vector(fields.begin(), fields.end()),
              (std::vector<std::string_view>{"A1   ", "NICOLÒ", "  ", "006", "00012,50", "07", "09032011", " A1   "}));

    Parcel again;
    ParseLine<kLabel>(line, again);
    EXPECT_EQ(again.Code.View(), "A1   ");
    EXPECT_EQ(again.Name, "NICOLÒ");
    EXPECT_EQ(again.Pieces, 6);
    EXPECT_EQ(again.Price, Currency::FromDouble(12.5));
    EXPECT_FALSE(again.Sent || again.IsLast) << "what no row reads back stays";

    parcel.IsLast = false;
    parcel.Sent.reset();
    WriteLine<kLabel>(line, parcel);
    EXPECT_EQ(line, "A1   NICOLÒ  006        07         A1   ") << "nothing is written where there is nothing";
    parcel.Pieces = 1234;
    FixedLine written = FixedLine::Reopen(line, kLabel.length);
    PutFields<kLabel, 14, 16>(written, parcel);
    EXPECT_EQ(line, "A1   NICOLÒ  234        07         A1   ") << "completed in place, behind a letter of two bytes";

    Parcel shortOne;
    ParseLine<kLabel>("A1   NIC", shortOne);
    EXPECT_EQ(shortOne.Name + std::to_string(shortOne.Pieces), "NIC0");
}

TEST(LayoutTest, TheFirstColumnOfTheTableThatIsMissingIsNamed) {
    const auto missing = [](const std::vector<std::string>& names) {
        Parcel parcel;
        const auto rows = Rows(names);
        std::string told;
        try {
            BoundColumns<kColumns> columns(*rows);
        } catch (const Error& error) {
            told = error.what();
        }
        EXPECT_THROW(FindAndRead<kColumns>(parcel, *rows), Error);
        EXPECT_EQ(parcel.Code.Trimmed(), "A1") << "one column after the other";
        return told;
    };
    EXPECT_NE(missing({"Codice", "Prezzo", "Ultimo"}).find("Nome"), std::string::npos);
    EXPECT_NE(missing({"Codice", "Nome", "Ultimo"}).find("Colli"), std::string::npos);
}

TEST(LayoutTest, WhereAMemberStandsIsKnownToTheCompiler) {
    static_assert(PlaceOf<kLabel, &Parcel::Price>().position == 17);
    static_assert(PlaceOf<kLabel, &Parcel::Code>().position == 1, "the first time");
    static_assert(PlaceOf<kLabel, &Parcel::Name>().length == 6, "also through a function of the record");
}

}  // namespace
}  // namespace vlm
