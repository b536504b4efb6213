#include <gtest/gtest.h>

#include "prescriptions/ASLPanoramicoLine.h"
#include "support/Caught.h"
#include "support/FakeConnection.h"
#include "support/Positions.h"
#include "support/PrescriptionRow.h"
#include "values/Error.h"

namespace vlm::test {
namespace {

using data::Value;

class PrescriptionRecordTest : public testing::Test {
protected:
    PrescriptionRecordTest() {
        for (const auto& [id, code] : std::map<std::string, Value>{
                 {"1", "25000"}, {"2", "4019"}, {"3", "4019"}, {"4", "V22.2X"}, {"5", Value{}}, {"99", "none"}}) {
            FakeTable& found = connection_->tables[kQuery + id] = {{"CodificaCompleta"}, {}};
            if (id != "99") found.rows = {{code}};
        }
        record_.SetConnection(connection_);
        record_.SetRs(rows_.get());
    }

    void Set(const std::vector<std::pair<std::string, Value>>& cells) {
        for (const auto& [column, value] : cells) rows_->SetValue(column, value);
        rows_->Update();
    }
    std::string Line() {
        EXPECT_FALSE(record_.ReadData());
        EXPECT_EQ(record_.GetErrors(), "");
        return record_.GetFormattedLine();
    }
    /// What stands at a position of the line once a cell has another value.
    std::string With(std::size_t position, std::size_t length, const std::string& column, const Value& value) {
        Set({{column, value}});
        return Line().substr(position - 1, length);
    }

    const std::string kQuery = "SELECT CodificaCompleta FROM Aldra..Patologia WHERE IDPatologia = ";
    std::shared_ptr<FakeConnection> connection_ = std::make_shared<FakeConnection>();
    std::unique_ptr<data::MemoryRecordset> rows_ = PrescriptionRow();
    ASLPanoramicoLine record_;
};

TEST_F(PrescriptionRecordTest, CutsAndFillsByTheRules) {
    const auto number = [](std::int64_t value) { return Value(value); };
    EXPECT_EQ(With(1, 5, "CodiceRegionale", "123"), "00123");
    EXPECT_EQ(With(1, 5, "CodiceRegionale", "7654321"), "76543");
    EXPECT_EQ(With(1, 5, "CodiceRegionale", ""), "00000");
    EXPECT_EQ(With(6, 24, "PAZ_CodiceFiscale", "NCLMGR70E41G273KXYZ"), "NCLMGR70E41G273K15032011");
    EXPECT_EQ(With(6, 24, "PAZ_CodiceFiscale", "abc"), "abc             15032011");
    EXPECT_EQ(With(22, 8, "DataRicetta", Date(40609.75)), "07032011");
    EXPECT_EQ(With(46, 2, "Quantita_1", number(1)), "01");
    EXPECT_EQ(With(46, 2, "Quantita_1", number(123)), "23");
    EXPECT_EQ(With(64, 2, "Quantita_2", number(0)), "00");
    EXPECT_EQ(With(30, 10, "CodiceAIC_1", Value{}), "          ");
    EXPECT_EQ(With(48, 10, "CodiceAIC_2", "12345678901"), "1234567890");
    EXPECT_EQ(With(45, 1, "IDTipoRichiesta", number(2)) + record_.SuggFarmaco2, "  ");
    EXPECT_EQ(With(45, 1, "IDTipoRichiesta", Value{}), " ");
    EXPECT_EQ(With(40, 5, "IDPatologia_1", number(4)), "V22.2");
}

TEST_F(PrescriptionRecordTest, TheOtherDiagnosisOnlyWhereTwoDiffer) {
    using Case = std::tuple<std::int64_t, std::int64_t, const char*, const char*, const char*>;
    for (const auto& [first, second, diagnosis1, diagnosis2, others] :
         {Case{1, 2, "25000", "4019 ", "4019 25000"}, Case{2, 3, "4019 ", "4019 ", "          "},
          Case{1, 0, "25000", "     ", "          "}, Case{-1, 2, "     ", "4019 ", "          "},
          Case{99, 2, "     ", "4019 ", "          "}, Case{5, 1, "     ", "25000", "          "}}) {
        Set({{"IDPatologia_1", first}, {"IDPatologia_2", second}});
        const std::string line = Line();
        EXPECT_EQ(line.substr(39, 5), diagnosis1);
        EXPECT_EQ(line.substr(57, 5), diagnosis2);
        EXPECT_EQ(line.substr(66), others);
    }
}

TEST_F(PrescriptionRecordTest, AsksOnceForWhatItFindsAndAgainForWhatItDoesNot) {
    const std::pair<std::int64_t, std::int64_t> rows[] = {{1, 99}, {99, 1}, {0, -7}, {1, 5}, {5, 2}};
    for (const auto& [first, second] : rows) {
        Set({{"IDPatologia_1", first}, {"IDPatologia_2", second}});
        record_.ReadData();
    }
    std::string asked;
    for (const std::string& query : connection_->asked) asked += query.substr(kQuery.size()) + " ";
    EXPECT_EQ(asked, "1 99 99 5 2 ");
    // Without an illness no connection is needed; with an unknown one its want is told.
    record_.SetConnection(nullptr);
    Set({{"IDPatologia_1", Value{}}, {"IDPatologia_2", std::int64_t{1}}});
    EXPECT_EQ(Line().substr(57, 5), "25000");
    Set({{"IDPatologia_1", std::int64_t{3}}});
    EXPECT_THROW(record_.ReadData(), Error);
}

TEST_F(PrescriptionRecordTest, NullsThatMustHoldAValueAreErrorsNamingTheColumn) {
    for (const char* column : {"CodiceRegionale", "PAZ_CodiceFiscale", "DataRicetta", "Quantita_1", "Quantita_2"}) {
        const Value kept = rows_->ValueOf(rows_->Ordinal(column));
        Set({{column, Value{}}});
        const Error error = Caught([&] { record_.ReadData(); });
        EXPECT_EQ(std::string(error.what()), std::string("Uso di Null non valido: colonna ") + column + ".");
        EXPECT_EQ(error.Number(), 94);
        Set({{column, kept}});
    }
    Set({{"Quantita_1", std::int64_t{32768}}});
    EXPECT_THROW(record_.ReadData(), OverflowError);
    data::MemoryRecordset narrow;  // without a column
    record_.SetRs(&narrow);
    EXPECT_THROW(record_.ReadData(), Error);
    record_.SetRs(nullptr);
    EXPECT_THROW(record_.ReadData(), Error);
}

TEST_F(PrescriptionRecordTest, ItsFieldsCanBeSetAndAFailedReadingClearsThem) {
    ASLPanoramicoLine record;
    EXPECT_EQ(record.GetFormattedLine(), "");
    record.PrescrivibileSSN = true;
    record.CodMed = "12";
    record.DataRicetta = *Date::FromYmd(2003, 2, 1);
    record.QFarmaco2 = 7;
    record.TipoRecord = "XY";
    EXPECT_EQ(record.GetFormattedLine(),
              Positions(76, {At(1, "00012"), At(22, "01022003"), At(46, "00"), At(64, "07"), At(66, "X")}).Line());

    Line();
    Set({{"CodiceRegionale", Value{}}});
    EXPECT_THROW(record_.ReadData(), Error);
    EXPECT_EQ(record_.GetFormattedLine(),
              Positions(76, {At(1, "00000"), At(22, "30121899"), At(46, "00"), At(64, "00")}).Line());
    Set({{"CodiceRegionale", "1"}, {"PrescrivibileSSN", false}});
    EXPECT_EQ(Line(), "");
}

}  // namespace
}  // namespace vlm::test
