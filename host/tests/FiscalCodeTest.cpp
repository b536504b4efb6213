#include <gtest/gtest.h>

#include "services/FiscalCode.h"
#include "support/ArchiveHost.h"
#include "support/RowText.h"
#include "values/Error.h"

namespace vlm::host {
namespace {

using data::testing::ErrorText;

TEST(FiscalCode, IsBuiltByThePublicRules) {
    const struct {
        const char *surname, *name;
        int year, month, day;
        bool female;
        const char *birthplace, *code;
    } constructions[] = {
        {"Rossi", "Mario", 1980, 1, 1, false, "H501", "RSSMRA80A01H501U"},
        {"D'Amico", "Nicolò", 1973, 2, 28, false, "G273", "DMCNCL73B28G273P"},
        {"Cantù", "Gianfranco", 1960, 11, 17, false, "A662", "CNTGFR60S17A662J"},  // first, third, fourth consonant
        {"Fo", "Ada", 2004, 2, 29, true, "C351", "FOXDAA04B69C351Y"},              // filled with X; vowels follow
        {"Schirò", "Zoè", 2012, 8, 1, true, "L219", "SCHZOE12M41L219D"},
        {"Lo Bianco", "José", 2000, 7, 15, false, "z131", "LBNJSO00L15Z131D"},
    };
    for (const auto& one : constructions) {
        const Date birth = *Date::FromYmd(one.year, one.month, one.day);
        EXPECT_EQ(FiscalCode({one.surname, one.name, birth, one.female, one.birthplace}), one.code) << one.surname;
    }
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
    const struct {
        const char *code, *person, *why;
    } cases[] = {
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
    for (const auto& each : cases) EXPECT_EQ(Decoded(Checked(each.code)), each.person) << each.code << ": " << each.why;

    // The century turns with the day.
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
    const std::pair<std::string, const char*> cases[] = {
        {"", "16 caratteri"},
        {"RSSMRA80A01H501UU", "16 caratteri"},
        {std::string(100000, 'A'), "16 caratteri"},
        {"RSSMRA80A01H501X", "il carattere di controllo dovrebbe essere U"},
        {"RSSMR180A01H501V", "posizione 6"},
        {"RSSMRAA0A01H501C", "posizione 7"},
        {"RSSMRA80F01H501G", "posizione 9"},
        {"RSSMRA80À01H501U", "posizione 9"},
        {"RSSMRA80A01H5 1U", "posizione 14"},
        {"RSSMRA80A01H5011", "posizione 16"},
        {"RSSMRA80A00H501", "la data di nascita non esiste"},
        {"RSSMRA80B30H501", "la data di nascita non esiste"},
        {"RSSMRA80A40H501", "la data di nascita non esiste"},
        {"RSSMRA80A72H501", "la data di nascita non esiste"},
    };
    for (const auto& [code, reason] : cases) {
        const std::string error = ErrorText([&, given = code] { decoder->SetFiscalCode(Checked(given)); });
        EXPECT_NE(error.find(reason), std::string::npos) << code << ": " << error;
        EXPECT_LT(error.size(), 200U);
        EXPECT_EQ(Shown(), before);
        EXPECT_FALSE(IsFiscalCode(Checked(code))) << code;
    }
    decoder = host.components.NewFiscalCodeDecoder();
    EXPECT_THROW(decoder->SetFiscalCode("RSSMRA80A01H501U"), Error) << "no comune can be looked for";
    EXPECT_EQ(Shown(), "  0");
}

}  // namespace
}  // namespace vlm::host
