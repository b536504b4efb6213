#include "elements/ComuneFinder.h"

#include <algorithm>

#include "frame/ModGeneral.h"

namespace vlm {

namespace {

constexpr std::size_t kLongestName = 200;     // in bytes; no comune has so long a name
constexpr std::size_t kLongestIstatCode = 9;  // six digits, and room for zeros in front

bool IsIstatCode(std::string_view code) {
    return !code.empty() && code.size() <= kLongestIstatCode &&
           std::all_of(code.begin(), code.end(), [](char c) { return c >= '0' && c <= '9'; });
}

}  // namespace

std::int64_t ComuneFinder::FindComuneByName(std::string_view name) {
    constexpr std::string_view kOdd("%_[\0", 4);
    if (name.empty() || name.size() > kLongestName || name.find_first_of(kOdd) != std::string_view::npos) return 0;
    if (const auto found = byName_.find(name); found != byName_.end()) return found->second;
    const std::string pattern = library_.Utility().SqlString(std::string(name) + "%");
    const data::RecordsetPtr rows = library_.RequireConnection().Open(
        "SELECT IDComune FROM Aldra..Comune WHERE Comune Like " + pattern + " ORDER BY Comune");
    const std::int64_t id = rows->AtEnd() ? 0 : rows->IntegerOf(0);
    byName_.emplace(name, id);
    return id;
}

const std::string& ComuneFinder::PostalCodeOf(std::int64_t idComune) {
    if (const auto found = postalCodes_.find(idComune); found != postalCodes_.end()) return found->second;
    return postalCodes_
        .emplace(idComune, LookupValue(&library_.RequireConnection(), "Aldra..Comune", "Cap",
                                       "IDComune = " + std::to_string(idComune)))
        .first->second;
}

std::optional<ComuneFinder::Comune> ComuneFinder::FindComuneByIstat(std::string_view code) {
    if (!IsIstatCode(code)) return std::nullopt;
    if (const auto found = byIstat_.find(code); found != byIstat_.end()) return found->second;
    const data::RecordsetPtr rows = library_.RequireConnection().Open(
        "SELECT IDComune, Comune, Cap FROM Aldra..Comune WHERE CodiceISTAT = " + std::string(code));
    Comune comune;
    if (!rows->AtEnd()) comune = {rows->IntegerOf(0), std::string(rows->TextOf(1)), std::string(rows->TextOf(2))};
    return byIstat_.emplace(code, std::move(comune)).first->second;
}

}  // namespace vlm
