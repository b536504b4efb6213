#include <gtest/gtest.h>

#include "PersonDecoder.h"
#include "services/FiscalCode.h"
#include "support/ArchiveHost.h"
#include "support/RowText.h"
#include "values/Error.h"

namespace vlm::host {
namespace {

using data::testing::ErrorText;

constexpr const char* kTwins =
    "INSERT INTO Comune (IDComune, Comune, CodiceCatastale) VALUES (77, 'Roma Capitale', 'H501'), (90, 'Asti', 'a479')";

class PersonDecoderTest : public testing::Test {
protected:
    std::string Decoded(const std::string& code) {
        decoder->SetFiscalCode(code);
        return Shown();
    }
    std::string Shown() const {
        return decoder->BirthDate() + " " + decoder->Sex() + " " + std::to_string(decoder->BirthComune());
    }
    /// The first fifteen characters with the check character that belongs to them.
    static std::string Checked(const std::string& firstFifteen) {
        return firstFifteen + FiscalCheckCharacter(firstFifteen);
    }
    void Connect() {
        decoder = host.components.NewFiscalCodeDecoder();
        decoder->SetConnection(host.connection);
    }

    test::ArchiveHost host{"", kTwins};  // 23/11/2026
    std::unique_ptr<FiscalCodeDecoder> decoder;
};

TEST_F(PersonDecoderTest, ReadsWhatACodeSays) {
    Connect();
    EXPECT_EQ(Shown(), "  0");
    const struct {
        std::string code, person, why;
    } cases[] = {
        {"RSSMRA80A01H501U", "01/01/1980 M 4", "the first comune of a code"},
        {"DMCNCL73B28G273P", "28/02/1973 M 3", ""},
        {"FOXDAA04B69C351Y", "29/02/2004 F 2", "a leap day, a woman"},
        {"  rssmra80a01h501u ", "01/01/1980 M 4", "small letters, blanks"},
        {"MLLSNT82P65Z404U", "25/09/1982 F 0", "born abroad"},
        {Checked("RSSMRA80A01A944"), "01/01/1980 M 0", "a comune that the archive does not have"},
        {Checked("RSSMRA80A01A479"), "01/01/1980 M 90", "codes compare without regard to case"},
        {Checked("RSSMRA80T71H501"), "31/12/1980 F 4", "last day"},
        // letters for digits, one after the other and all seven
        {Checked("RSSMRAUPALMH5LM"), "01/01/1983 M 4", "some of them"},
        {"RSSMRA80A01H50MM", "01/01/1980 M 4", "the last digit"},
        {"RSSMRA8LA01H501F", "01/01/1980 M 4", "a digit of the year"},
        {Checked("RSSMRAULALMHRLM"), "01/01/1980 M 4", "all of them"},
        {Checked("RSSMRAULAQMHRLM"), "01/01/1980 F 4", "of a woman"},
        {Checked("RSSMRAULALMZQLQ"), "01/01/1980 M 0", "of a foreign state"},
        // the century in which today is not before the birth
        {Checked("RSSMRA26S23H501"), "23/11/2026 M 4", "born today"},
        {Checked("RSSMRA26S24H501"), "24/11/1926 M 4", "not yet born in this century"},
        {Checked("RSSMRA00B29H501"), "29/02/2000 M 4", "a leap year by 400"},
        {Checked("RSSMRA27A01H501"), "01/01/1927 M 4", ""},
        {Checked("RSSMRA99T31H501"), "31/12/1999 M 4", ""},
    };
    for (const auto& each : cases) {
        EXPECT_EQ(Decoded(each.code), each.person) << each.code << ": " << each.why;
    }
}

TEST_F(PersonDecoderTest, TheCenturyTurnsWithTheDay) {
    const struct {
        const char* code;
        int year, month, day;
        const char* birth;
    } cases[] = {
        {"RSSMRA00A01H501", 1999, 12, 31, "01/01/1900"}, {"RSSMRA00A01H501", 2000, 1, 1, "01/01/2000"},
        {"RSSMRA99T31H501", 2000, 1, 1, "31/12/1999"},   {"RSSMRA04B29H501", 2004, 2, 28, "29/02/1904"},
        {"RSSMRA04B29H501", 2004, 2, 29, "29/02/2004"},
    };
    for (const auto& each : cases) {
        host.clock = sys::FixedClock(*Date::FromYmd(each.year, each.month, each.day));
        Connect();
        decoder->SetFiscalCode(Checked(each.code));
        EXPECT_EQ(decoder->BirthDate(), each.birth) << each.year;
    }
    host.clock = sys::FixedClock(*Date::FromYmd(1999, 12, 31));
    Connect();
    EXPECT_THROW(decoder->SetFiscalCode(Checked("RSSMRA00B29H501")), Error);  // 1900 was no leap year
}

TEST_F(PersonDecoderTest, ACodeThatIsNotValidIsRefusedAndChangesNothing) {
    Connect();
    const std::string before = Decoded("DMCNCL73B28G273P");
    const struct {
        std::string code, reason;
    } cases[] = {
        {"", "16 caratteri"},
        {"RSSMRA80A01H501", "16 caratteri"},
        {"RSSMRA80A01H501UU", "16 caratteri"},
        {"RSSMRA80A01H501X", "il carattere di controllo dovrebbe essere U"},
        {"RSSMR180A01H501U", "posizione 6"},
        {"RSSMRA8AA01H501U", "posizione 8"},
        {"RSSMRA80F01H501U", "posizione 9"},
        {"RSSMRA80À01H501U", "posizione 9"},
        {"RSSMRA80A01H5 1U", "posizione 14"},
        {"RSSMRA80A01H5011", "posizione 16"},
        {Checked("RSSMRA80A00H501"), "la data di nascita non esiste"},
        {Checked("RSSMRA80A32H501"), "la data di nascita non esiste"},
        {Checked("RSSMRA80A40H501"), "la data di nascita non esiste"},
        {Checked("RSSMRA80A72H501"), "la data di nascita non esiste"},
        {Checked("RSSMRA81B29H501"), "la data di nascita non esiste"},
        {Checked("RSSMRA80D71H501"), "la data di nascita non esiste"},
        {std::string(100000, 'A'), "16 caratteri"},
    };
    for (const auto& each : cases) {
        const std::string error = ErrorText([&] { decoder->SetFiscalCode(each.code); });
        EXPECT_NE(error.find(each.reason), std::string::npos) << each.code << ": " << error;
        EXPECT_LT(error.size(), 200U);
        EXPECT_EQ(Shown(), before);
    }
}

TEST_F(PersonDecoderTest, AComuneThatCannotBeSearchedIsAFailure) {
    decoder = host.components.NewFiscalCodeDecoder();
    EXPECT_THROW(decoder->SetFiscalCode("RSSMRA80A01H501U"), Error);
    EXPECT_EQ(Shown(), "  0");
    EXPECT_EQ(Decoded("MLLSNT82P65Z404U"), "25/09/1982 F 0");
}

}  // namespace
}  // namespace vlm::host
