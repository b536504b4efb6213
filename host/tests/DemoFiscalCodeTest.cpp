#include <gtest/gtest.h>

#include "services/FiscalCode.h"
#include "values/Error.h"

namespace vlm::host {
namespace {

struct Construction {
    const char *surname, *name;
    int year, month, day;
    bool female;
    const char *birthplace, *code;
};

TEST(DemoFiscalCode, IsBuiltByThePublicRules) {
    const Construction constructions[] = {
        {"Rossi", "Mario", 1980, 1, 1, false, "H501", "RSSMRA80A01H501U"},
        {"Rossi", "Mario", 1985, 12, 10, false, "A562", "RSSMRA85T10A562S"},
        {"Moretti", "Matteo", 1991, 4, 8, false, "F205", "MRTMTT91D08F205J"},
        {"Miller", "Samantha", 1982, 9, 25, true, "Z404", "MLLSNT82P65Z404U"},
        {"D'Amico", "Nicolò", 1973, 2, 28, false, "G273", "DMCNCL73B28G273P"},
        {"Cantù", "Gianfranco", 1960, 11, 17, false, "A662", "CNTGFR60S17A662J"},  // first, third, fourth consonant
        {"Fo", "Ada", 2004, 2, 29, true, "C351", "FOXDAA04B69C351Y"},              // filled with X; vowels follow
        {"Re", "Eva", 1999, 12, 31, true, "H163", "REXVEA99T71H163I"},
        {"Dell'Aquila", "Gian Maria", 2000, 6, 10, true, "F205", "DLLGMR00H50F205G"},
        {"Schirò", "Zoè", 2012, 8, 1, true, "L219", "SCHZOE12M41L219D"},
        {"Lo Bianco", "José", 2000, 7, 15, false, "z131", "LBNJSO00L15Z131D"},
    };
    for (const Construction& one : constructions) {
        const Date birth = *Date::FromYmd(one.year, one.month, one.day);
        EXPECT_EQ(FiscalCode({one.surname, one.name, birth, one.female, one.birthplace}), one.code) << one.surname;
    }
    EXPECT_THROW(FiscalCode({"Rossi", "Mario", Date(), false, "H5"}), Error);
}

TEST(DemoFiscalCode, IsToldFromWhatOnlyLooksLikeIt) {
    const struct {
        const char *code, *why;
        bool lawful;
    } cases[] = {
        {"RSSMRA80A01H501U", "as issued", true},
        {"rssmra80a01h501u", "small letters", true},
        {"RSSMRA80A01H50MM", "a digit replaced", true},
        {"RSSMRA8LA01H501F", "a digit of the year replaced", true},
        {"RSSMRA80B29H501Q", "29 February", true},
        {"RSSMRA80A01H501X", "check character", false},
        {"RSSMRA80A00H501V", "day 0", false},
        {"RSSMRA80A32H501C", "day 32", false},
        {"RSSMRA80B30H501X", "30 February", false},
        {"RSSMRA80D31H501D", "31 April", false},
        {"RSSMRA80A72H501G", "day 32 of a woman", false},
        {"RSSMRA80F01H501G", "no such month letter", false},
        {"RSSMR180A01H501V", "digit among the letters", false},
        {"RSSMRAA0A01H501C", "letter that stands for no digit", false},
        {"RSSMRA80A01H501", "too short", false},
        {"RSSMRA80A01H501UU", "too long", false},
        {"", "empty", false},
    };
    for (const auto& one : cases) EXPECT_EQ(IsFiscalCode(one.code), one.lawful) << one.why;
}

}  // namespace
}  // namespace vlm::host
