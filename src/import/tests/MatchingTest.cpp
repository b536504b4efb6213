#include "ImportFixture.h"
#include "elements/ArchiveMatcher.h"
#include "elements/ComuneFinder.h"

namespace vlm::test {
namespace {

class MatchingTest : public ImportTest {
protected:
    void Execute(const std::string& sql) { host.connection->Execute(sql); }
};

TEST_F(MatchingTest, ByCodeThenByFiscalCode) {
    ArchiveMatcher archive(library);
    const struct {
        const char* code;
        int patient;
    } codes[] = {{"T7", 7}, {"a7", 7}, {"T3", 3}, {"t3  ", 3}, {"", 0}, {"(NULLO)", 0}, {"X'; --", 0}, {"T", 0}};
    for (const auto& each : codes) EXPECT_EQ(archive.FindPatientByCode(each.code), each.patient) << each.code;
    EXPECT_EQ(archive.FindPatientByFiscalCode("cntnna70a41b639q"), 7);
    EXPECT_EQ(archive.FindPatientByFiscalCode("DPPDPP70A01H501X"), 3);
    EXPECT_EQ(archive.FindPatientByFiscalCode(""), 0);
    Execute("INSERT INTO Paziente (IDPaziente, NumAssistito, CodiceFiscale) VALUES (99, 'N1', 'NUOVO')");
    EXPECT_EQ(archive.FindPatientByFiscalCode("NUOVO"), 0) << "the snapshot is of the read's start";
    archive.Close();
    EXPECT_EQ(archive.FindPatientByFiscalCode("NUOVO"), 99);
    EXPECT_EQ(archive.FindPatientByCode("N1"), 99) << "the assisted number is there after a look-up by fiscal code";
}

/// A source that is small against the archive asks for its patients; the answers are those of the whole archive.
TEST_F(MatchingTest, AskingGivesTheAnswersOfTheSnapshot) {
    host.connection->BeginTransaction();
    for (int patient = 100; patient < 1100; ++patient) {
        const std::string number = std::to_string(patient);
        Execute("INSERT INTO Paziente (IDPaziente, NumTesseraSanitaria, NumAssistito, CodiceFiscale) VALUES (" +
                number + ", 'T" + number + "', 'A" + std::to_string(2000 - patient) + "', 'CF" + number + "')");
    }
    host.connection->CommitTransaction();
    for (const bool shared : {false, true}) {
        ArchiveMatcher whole(library), asked(library);
        EXPECT_TRUE(asked.IsWorthAsking(40));
        EXPECT_FALSE(asked.IsWorthAsking(60));
        Lines codes = {"T500", "a1500", "ignoto", "D'ELIA", "A7", "T500"};
        Lines fiscalCodes = {"cf600", "CF6000", "CNTNNA70A41B639Q"};
        if (shared) {  // by several patients
            codes.insert(codes.end(), {"T7", "t3"});
            fiscalCodes.emplace_back("DPPDPP70A01H501X");
        }
        asked.AskFor(codes, fiscalCodes);
        for (const std::string& code : codes) {
            EXPECT_EQ(asked.FindPatientByCode(code), whole.FindPatientByCode(code)) << code;
        }
        for (const std::string& code : fiscalCodes) {
            EXPECT_EQ(asked.FindPatientByFiscalCode(code), whole.FindPatientByFiscalCode(code)) << code;
        }
        EXPECT_EQ(asked.FindPatientByCode("T500"), 500);
        EXPECT_EQ(asked.FindPatientByCode("A1500"), 500);
        // Only the whole archive knows whom nobody asked for.
        EXPECT_EQ(asked.FindPatientByCode("T700"), shared ? 700 : 0);
    }
    ArchiveMatcher nothing(library);
    nothing.AskFor({}, {});
    EXPECT_EQ(nothing.FindPatientByCode("T7"), 0);
}

TEST_F(MatchingTest, SmallSourcesReadTheSameElements) {
    const std::string line =
        "1;testata\n1;T7;;A;B;;;;;;;;x y\n2;z;dppdpp70a01h501x;A;B;;;;;;;;x y\n3;A7;n;A;B;;;;;;;;x y\n";
    const std::string source = Source(line);
    const Lines before = ElementsOf(component.GetElementList(source));
    host.connection->BeginTransaction();
    for (int patient = 100; patient < 300; ++patient) {
        Execute("INSERT INTO Paziente (IDPaziente, CodiceFiscale) VALUES (" + std::to_string(patient) + ", 'Z')");
    }
    host.connection->CommitTransaction();
    EXPECT_EQ(ElementsOf(component.GetElementList(source)), before);
    EXPECT_EQ(before.size(), 3U);
    Execute("INSERT INTO Paziente (IDPaziente, NumAssistito) VALUES (900, 'Z9')");
    const std::string added = Source("t\n4;z9;;A;B;;;;;;;;x y\n");
    EXPECT_NE(ElementsOf(component.GetElementList(added)).front().find("IDPaziente=900"), std::string::npos);
}

TEST_F(MatchingTest, ComuniByNameAndByIstatCode) {
    host.connection->Execute(
        "INSERT INTO Aldra..Comune (IDComune, Comune, CodiceISTAT, Cap) VALUES (20, 'ROMANO D''EZZELINO', '024086', "
        "'36060'), (21, 'Romagnano al Monte', '065110', '84020'), (22, 'CANTÙ ASNAGO', '1', '1'), "
        "(23, 'Z_%[x', '2', '2')");
    ComuneFinder comuni(library);
    const struct {
        const char* name;
        int comune;
    } names[] = {{"roma", 4}, {"ROMAG", 21}, {"romano d'ez", 20}, {"cantÙ", 1},  {"CANTÙ A", 22}, {"Cant", 1},
                 {"", 0},     {"Z_", 0},     {"Z%", 0},           {"R[o]ma", 0}, {"Nessuno", 0},  {"D'X", 0}};
    for (const auto& each : names) EXPECT_EQ(comuni.FindComuneByName(each.name), each.comune) << each.name;
    EXPECT_EQ(comuni.PostalCodeOf(1), "22063");
    EXPECT_EQ(comuni.PostalCodeOf(4), "");
    EXPECT_EQ(comuni.FindComuneByIstat("082053")->name, "Palermo");
    EXPECT_EQ(comuni.FindComuneByIstat("82053")->cap, "90100");
    EXPECT_EQ(comuni.FindComuneByIstat("999999")->id, 0);
    for (const char* code : {"", "08205x", "1 OR 1=1", "-1", "12345678901234567890"}) {
        EXPECT_FALSE(comuni.FindComuneByIstat(code)) << code;
    }
    // One look-up in a read: what changes meanwhile is seen by the next.
    host.connection->Execute("UPDATE Aldra..Comune SET Comune = 'X' WHERE IDComune = 4");
    EXPECT_EQ(comuni.FindComuneByName("roma"), 4);
    EXPECT_EQ(ComuneFinder(library).FindComuneByName("roma"), 21);
}

TEST_F(MatchingTest, AnElementSaysWhetherItIsSelected) {
    const ElementListPtr list = NewElementList();
    list->AddNew();
    EXPECT_THROW(list->Update(), Error);
    list->SetValue("Selezionato", true);
    list->Update();
}

}  // namespace
}  // namespace vlm::test
