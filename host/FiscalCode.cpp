#include "host/FiscalCode.h"

#include "platform/Error.h"
#include "platform/text/Utf8.h"

namespace vlm::host {

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

/// "L" a letter, "D" a digit or the letter of one, "M" the letter of a month.
bool HasForm(std::string_view code) {
    constexpr std::string_view kForm = "LLLLLLDDMDDLDDDL";
    if (code.size() != kForm.size()) return false;
    for (std::size_t i = 0; i < kForm.size(); ++i) {
        if (kForm[i] == 'L' && !IsLetter(code[i])) return false;
        if (kForm[i] == 'D' && DigitOf(code[i]) < 0) return false;
        if (kForm[i] == 'M' && kMonths.find(code[i]) == std::string_view::npos) return false;
    }
    return true;
}

bool HasDay(std::string_view code) {
    constexpr int kDaysOfMonth[] = {31, 29, 31, 30, 31, 30, 31, 31, 30, 31, 30, 31};
    int day = DigitOf(code[9]) * 10 + DigitOf(code[10]);
    if (day > kWomensDays) day -= kWomensDays;
    return day >= 1 && day <= kDaysOfMonth[kMonths.find(code[8])];
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

}  // namespace vlm::host
