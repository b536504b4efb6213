#include <gtest/gtest.h>

#include "archive/FiscalCode.h"
#include "support/ArchiveHost.h"
#include "support/RowText.h"
#include "values/Error.h"

namespace vlm::archive {
namespace {

using data::testing::ErrorText;

TEST(FiscalCode, IsBuiltByThePublicRules) {
    const auto on = [](int year, int month, int day) { return *Date::FromYmd(year, month, day); };
    const std::pair<FiscalPerson, const char*> constructions[] = {
        {{"Rossi", "Mario", on(1980, 1, 1), false, "H501"}, "RSSMRA80A01H501U"},
        {{"D'Amico", "Nicolò", on(1973, 2, 28), false, "G273"}, "DMCNCL73B28G273P"},
        // The first, third and fourth consonant; vowels follow, filled with X.
        {{"Cantù", "Gianfranco", on(1960, 11, 17), false, "A662"}, "CNTGFR60S17A662J"},
        {{"Fo", "Ada", on(2004, 2, 29), true, "C351"}, "FOXDAA04B69C351Y"},
        {{"Schirò", "Zoè", on(2012, 8, 1), true, "L219"}, "SCHZOE12M41L219D"},
        {{"Lo Bianco", "José", on(2000, 7, 15), false, "z131"}, "LBNJSO00L15Z131D"}};
    for (const auto& [person, code] : constructions) EXPECT_EQ(FiscalCode(person), code);
    EXPECT_THROW(FiscalCode({"Rossi", "Mario", Date(), false, "H5"}), Error);
}

class FiscalCodeDecoderTest : public testing::Test {
protected:
    std::string Decoded(const std::string& code) {
        decoder->SetFiscalCode(code);
        return Shown();
    }
    std::string Shown() const {
        return decoder->BirthDate() + " " + decoder->Sex() + " " + std::to_string(decoder->BirthComune());
    }
    /// Fifteen characters with the check character that belongs to them; anything else as it is.
    static std::string Checked(const std::string& code) {
        return code.size() == 15 ? code + FiscalCheckCharacter(code) : code;
    }
    void Connect(int year = 2026, int month = 11, int day = 23) {
        host.clock = sys::FixedClock(*Date::FromYmd(year, month, day));
        decoder = host.components.NewFiscalCodeDecoder();
        decoder->SetConnection(host.connection);
    }

    test::ArchiveHost host{"",
                           "INSERT INTO Comune (IDComune, Comune, CodiceCatastale) VALUES"
                           " (77, 'Roma Capitale', 'H501'), (90, 'Asti', 'a479')"};
    std::unique_ptr<FiscalCodeDecoder> decoder;
};

TEST_F(FiscalCodeDecoderTest, ReadsWhatACodeSays) {
    Connect();
    EXPECT_EQ(Shown(), "  0");
    const std::tuple<const char*, const char*, const char*> cases[] = {
        {"  DMCNCL73B28G273P ", "28/02/1973 M 3", "blanks around it"},
        {"FOXDAA04B69C351Y", "29/02/2004 F 2", "a leap day, a woman"},
        {"rssmra80a01h501u", "01/01/1980 M 4", "small letters; the first comune of a code"},
        {"MLLSNT82P65Z404U", "25/09/1982 F 0", "born abroad"},
        {"RSSMRA80A01A479", "01/01/1980 M 90", "codes of comuni compare without regard to case"},
        {"RSSMRA80A01A944", "01/01/1980 M 0", "a comune that the archive does not have"},
        {"RSSMRA80T71H501", "31/12/1980 F 4", "last day"},
        {"RSSMRA80A01H50MM", "01/01/1980 M 4", "a letter for a digit"},
        {"RSSMRAULAQMHRLM", "01/01/1980 F 4", "letters for all digits, of a woman"},
        {"RSSMRAULALMZQLQ", "01/01/1980 M 0", "of a foreign state"},
        // the century in which today is not before the birth
        {"RSSMRA26S23H501", "23/11/2026 M 4", "born today"},
        {"RSSMRA26S24H501", "24/11/1926 M 4", "not yet born in this century"},
        {"RSSMRA00B29H501", "29/02/2000 M 4", "a leap year by 400"},
    };
    for (const auto& [code, person, why] : cases) EXPECT_EQ(Decoded(Checked(code)), person) << code << ": " << why;

    Connect(1999, 12, 31);
    EXPECT_EQ(Decoded(Checked("RSSMRA00A01H501")), "01/01/1900 M 4");
    EXPECT_THROW(decoder->SetFiscalCode(Checked("RSSMRA00B29H501")), Error) << "1900 was no leap year";
    EXPECT_TRUE(IsFiscalCode(Checked("RSSMRA00B29H501"))) << "the century is not known";
    Connect(2000, 1, 1);
    EXPECT_EQ(Decoded(Checked("RSSMRA00A01H501")), "01/01/2000 M 4");
}

TEST_F(FiscalCodeDecoderTest, ACodeThatIsNotValidIsRefusedAndChangesNothing) {
    Connect();
    const std::string before = Decoded("DMCNCL73B28G273P");
    const std::pair<const char*, std::vector<std::string>> cases[] = {
        {"16 caratteri", {"", "RSSMRA80A01H501UU", std::string(100000, 'A')}},
        {"il carattere di controllo dovrebbe essere U", {"RSSMRA80A01H501X"}},
        {"posizione 6", {"RSSMR180A01H501V"}},
        {"posizione 7", {"RSSMRAA0A01H501C"}},
        {"posizione 9", {"RSSMRA80F01H501G", "RSSMRA80À01H501U"}},
        {"posizione 14", {"RSSMRA80A01H5 1U"}},
        {"posizione 16", {"RSSMRA80A01H5011"}},
        {"nascita non esiste", {"RSSMRA80A00H501", "RSSMRA80B30H501", "RSSMRA80A40H501", "RSSMRA80A72H501"}}};
    for (const auto& [reason, codes] : cases) {
        for (const std::string& code : codes) {
            const std::string error = ErrorText([&] { decoder->SetFiscalCode(Checked(code)); });
            EXPECT_PRED2(data::testing::Holds, error, reason) << code;
            EXPECT_LT(error.size(), 200U);
            EXPECT_EQ(Shown(), before);
            EXPECT_FALSE(IsFiscalCode(Checked(code))) << code;
        }
    }
    decoder = host.components.NewFiscalCodeDecoder();
    EXPECT_THROW(decoder->SetFiscalCode("RSSMRA80A01H501U"), Error) << "no comune can be looked for";
    EXPECT_EQ(Shown(), "  0");
}

}  // namespace
}  // namespace vlm::archive
