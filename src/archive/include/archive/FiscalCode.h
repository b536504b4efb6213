#pragma once

#include <string>
#include <string_view>

#include "values/Date.h"

/// The Italian fiscal code of a person: sixteen characters made of surname, first name, birth date, sex and the
/// land-registry code of the comune of birth, closed by a check character (decree of 23/12/1976).
namespace vlm::archive {

struct FiscalPerson {
    std::string_view surname;  // UTF-8; accents, apostrophes and blanks do not count
    std::string_view name;
    Date birth;
    bool female = false;
    std::string_view landRegistryCode;  // a letter and three digits, "H501"
};

/// Throws Error when the land-registry code is not of four characters.
std::string FiscalCode(const FiscalPerson& person);

/// Of the first fifteen characters, capital letters and digits; throws Error for anything else.
char FiscalCheckCharacter(std::string_view firstFifteen);

/// Whether a code, in capitals or not, has the form of a fiscal code, a day and month that exist and the right check
/// character. Digits replaced by letters, as the tax office does for people whose codes would be equal, are lawful.
bool IsFiscalCode(std::string_view code);

/// What a code says of whom it was given to.
struct FiscalBearer {
    Date birth;  // in the century that makes the person 0 to 99 years old
    bool female = false;
    std::string landRegistryCode;  // its digits as digits; "Z" and three of them for a foreign state
};

/// A code in capitals or not, blanks around it do not count. Throws Error with the reason for one that is not valid.
FiscalBearer ReadFiscalCode(std::string_view code, Date today);

}  // namespace vlm::archive
