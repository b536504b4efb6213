#include "archive/FiscalCode.h"

#include <tuple>

#include "values/Error.h"
#include "values/Utf8.h"

namespace vlm::archive {

namespace {

constexpr std::string_view kMonths = "ABCDEHLMPRST";
constexpr int kWomensDays = 40;  // added to the day of birth of a woman
/// The letters that stand for the digits 0 to 9 in the code of a person whose code would be another's.
constexpr std::string_view kDigitLetters = "LMNPQRSTUV";
/// Plain letters of U+00C0 to U+00DD; "?" is no letter.
constexpr std::string_view kWithoutAccent = "AAAAAAACEEEEIIIIDNOOOOO?OUUUUY";

bool IsLetter(char c) { return c >= 'A' && c <= 'Z'; }
bool IsDigit(char c) { return c >= '0' && c <= '9'; }
bool IsVowel(char c) { return std::string_view("AEIOU").find(c) != std::string_view::npos; }

char PlainLetter(char32_t character) {
    const char32_t upper = text::ToUpper(character);
    if (upper >= U'A' && upper <= U'Z') return static_cast<char>(upper);
    if (upper >= 0xC0 && upper - 0xC0 < kWithoutAccent.size()) {
        const char plain = kWithoutAccent[upper - 0xC0];
        return plain == '?' ? '\0' : plain;
    }
    return '\0';
}

struct Letters {
    std::string consonants, vowels;
};

Letters LettersOf(std::string_view name) {
    Letters letters;
    while (!name.empty()) {
        const char letter = PlainLetter(text::Decode(name));
        if (letter != '\0') (IsVowel(letter) ? letters.vowels : letters.consonants) += letter;
    }
    return letters;
}

std::string ThreeLetters(const Letters& letters) { return (letters.consonants + letters.vowels + "XXX").substr(0, 3); }

std::string NameLetters(std::string_view name) {
    Letters letters = LettersOf(name);
    if (letters.consonants.size() > 3) letters.consonants.erase(1, 1);  // first, third and fourth
    return ThreeLetters(letters);
}

void AppendTwoDigits(int number, std::string& out) {
    out += static_cast<char>('0' + number / 10 % 10);
    out += static_cast<char>('0' + number % 10);
}

/// The value of a character at an odd place (counted from 1), in the order 0-9 / A-Z of its even-place value.
constexpr int kOddValues[] = {1,  0,  5, 7, 9, 13, 15, 17, 19, 21, 2,  4,  18,
                              20, 11, 3, 6, 8, 12, 14, 16, 10, 22, 25, 24, 23};

/// The digit that a character stands for, -1 for none.
int DigitOf(char c) {
    if (IsDigit(c)) return c - '0';
    const std::size_t place = kDigitLetters.find(c);
    return place == std::string_view::npos ? -1 : static_cast<int>(place);
}

std::string AsciiUpper(std::string_view code) {
    std::string upper(code);
    for (char& c : upper)
        if (c >= 'a' && c <= 'z') c = static_cast<char>(c - 'a' + 'A');
    return upper;
}

constexpr std::size_t kCodeLength = 16;
/// The form of a code: "L" a letter, "D" a digit or the letter of one, "M" the letter of a month.
constexpr std::string_view kForm = "LLLLLLDDMDDLDDDL";

bool Fits(char form, char c) {
    switch (form) {
        case 'D':
            return DigitOf(c) >= 0;
        case 'M':
            return kMonths.find(c) != std::string_view::npos;
        default:
            return IsLetter(c);
    }
}

/// The place of the first character that does not fit the form, kCodeLength for none.
std::size_t FirstWrong(std::string_view code) {
    std::size_t at = 0;
    while (at < kCodeLength && at < code.size() && Fits(kForm[at], code[at])) ++at;
    return at;
}

bool HasForm(std::string_view code) { return code.size() == kCodeLength && FirstWrong(code) == kCodeLength; }

/// Two digits, or the letters that stand for them, as a number.
int NumberAt(std::string_view code, std::size_t at) { return DigitOf(code[at]) * 10 + DigitOf(code[at + 1]); }

/// Of a code that has the form. The year has no century yet.
Date::Civil BirthIn(std::string_view code) {
    Date::Civil birth;
    birth.year = NumberAt(code, 6);
    birth.month = static_cast<int>(kMonths.find(code[8])) + 1;
    birth.day = NumberAt(code, 9);
    if (birth.day > kWomensDays) birth.day -= kWomensDays;
    return birth;
}

bool HasDay(std::string_view code) {
    constexpr int kLeapYear = 2000;  // of which century the year is, the code does not say
    const Date::Civil birth = BirthIn(code);
    return Date::FromYmd(kLeapYear, birth.month, birth.day).has_value();
}

/// The day, in the latest century in which it is not after today.
std::optional<Date> WithCentury(Date::Civil birth, Date today) {
    const Date::Civil now = today.ToCivil();
    const int century = now.year / 100 * 100;
    birth.year += century;
    if (std::tie(birth.year, birth.month, birth.day) > std::tie(now.year, now.month, now.day)) birth.year -= 100;
    return Date::FromCivil(birth);
}

[[noreturn]] void RefuseCode(std::string_view code, const std::string& reason) {
    throw Error("Il codice fiscale \"" + std::string(text::Left(code, 40)) + "\" non è valido: " + reason + ".");
}

void RequireForm(std::string_view given, std::string_view code) {
    if (text::Length(code) != kCodeLength) RefuseCode(given, "deve avere 16 caratteri");
    const std::size_t wrong = FirstWrong(code);
    if (wrong < kCodeLength) {
        RefuseCode(given, "il carattere in posizione " + std::to_string(wrong + 1) + " non è ammesso");
    }
    const char check = FiscalCheckCharacter(code.substr(0, kCodeLength - 1));
    if (check != code.back()) RefuseCode(given, std::string("il carattere di controllo dovrebbe essere ") + check);
}

}  // namespace

std::string FiscalCode(const FiscalPerson& person) {
    if (person.landRegistryCode.size() != 4)
        throw Error("Codice catastale non valido: \"" + std::string(person.landRegistryCode) + "\".");
    const Date::Civil birth = person.birth.ToCivil();
    std::string code = ThreeLetters(LettersOf(person.surname)) + NameLetters(person.name);
    AppendTwoDigits(birth.year, code);
    code += kMonths[static_cast<std::size_t>(birth.month - 1)];
    AppendTwoDigits(birth.day + (person.female ? kWomensDays : 0), code);
    code += AsciiUpper(person.landRegistryCode);
    code += FiscalCheckCharacter(code);
    return code;
}

char FiscalCheckCharacter(std::string_view firstFifteen) {
    int sum = 0;
    for (std::size_t i = 0; i < firstFifteen.size(); ++i) {
        const char c = firstFifteen[i];
        if (!IsDigit(c) && !IsLetter(c))
            throw Error("Codice fiscale con caratteri non ammessi: \"" + std::string(firstFifteen) + "\".");
        const int value = IsDigit(c) ? c - '0' : c - 'A';
        sum += i % 2 == 0 ? kOddValues[value] : value;
    }
    return static_cast<char>('A' + sum % 26);
}

bool IsFiscalCode(std::string_view code) {
    const std::string upper = AsciiUpper(code);
    return HasForm(upper) && HasDay(upper) && FiscalCheckCharacter(std::string_view(upper).substr(0, 15)) == upper[15];
}

FiscalBearer ReadFiscalCode(std::string_view given, Date today) {
    const std::string code = AsciiUpper(text::Trim(given));
    RequireForm(given, code);
    const std::optional<Date> birth = WithCentury(BirthIn(code), today);
    if (!birth) RefuseCode(given, "la data di nascita non esiste");
    FiscalBearer bearer;
    bearer.birth = *birth;
    bearer.female = NumberAt(code, 9) > kWomensDays;
    bearer.landRegistryCode = code[11];
    for (std::size_t at = 12; at < 15; ++at) bearer.landRegistryCode += static_cast<char>('0' + DigitOf(code[at]));
    return bearer;
}

}  // namespace vlm::archive
