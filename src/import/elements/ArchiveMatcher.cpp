#include "elements/ArchiveMatcher.h"

#include <algorithm>

#include "values/Utf8.h"

namespace vlm {

namespace {

constexpr std::string_view kNoCode = "(nullo)";
// A patient asked for by key costs about as much as ten that are read in passing; at twenty asking is the cheaper way.
constexpr std::uint64_t kWorthAsking = 20;
// No code of the archive is longer, nor holds a zero byte.
constexpr std::size_t kLongestCode = 200;
// A statement stays under 200 KB, far from any engine's limit.
constexpr std::size_t kKeysOfAStatement = 5000;

std::uint64_t CountPatients(const Library& library) {
    const data::RecordsetPtr rows = library.RequireConnection().Open("SELECT COUNT(*) FROM Paziente");
    return rows->AtEnd() ? 0 : static_cast<std::uint64_t>(rows->IntegerOf(0));
}

std::string KeyList(const HostUtility& utility, const std::vector<std::string>& values, std::size_t first) {
    std::string list;
    const std::size_t end = std::min(values.size(), first + kKeysOfAStatement);
    for (std::size_t at = first; at < end; ++at) {
        if (!list.empty()) list += ", ";
        list += utility.SqlString(values[at]);
    }
    return list;
}

}  // namespace

std::int32_t ArchiveMatcher::FindPatientByCode(std::string_view code) {
    if (code.empty() || text::EqualNoCase(code, kNoCode)) return 0;
    if (assisted_.rows == nullptr) OpenSnapshot(true);
    const std::int32_t patient = Find(healthCard_, code);
    return patient != 0 ? patient : Find(assisted_, code);
}

std::int32_t ArchiveMatcher::FindPatientByFiscalCode(std::string_view fiscalCode) {
    if (fiscalCode.empty()) return 0;
    if (fiscalCode_.rows == nullptr) OpenSnapshot(false);
    return Find(fiscalCode_, fiscalCode);
}

/// The first column is the patient's key, whatever the statement reads besides.
std::int32_t ArchiveMatcher::Find(const Index& index, std::string_view value) const {
    return index.rows->MoveTo(index.ordinal, value) ? static_cast<std::int32_t>(index.rows->IntegerOf(0)) : 0;
}

void ArchiveMatcher::OpenSnapshot(bool withAssistedNumber) {
    Close();
    const data::RecordsetPtr source = library_.RequireConnection().Open(
        withAssistedNumber ? "SELECT IDPaziente, NumTesseraSanitaria, NumAssistito, CodiceFiscale FROM Paziente"
                           : "SELECT IDPaziente, NumTesseraSanitaria, CodiceFiscale FROM Paziente");
    kept_.push_back(data::MemoryRecordset::CopyOf(*source));
    data::MemoryRecordset& snapshot = *kept_.back();
    healthCard_ = {&snapshot, snapshot.Ordinal("NumTesseraSanitaria")};
    if (withAssistedNumber) assisted_ = {&snapshot, snapshot.Ordinal("NumAssistito")};
    fiscalCode_ = {&snapshot, snapshot.Ordinal("CodiceFiscale")};
}

bool ArchiveMatcher::IsWorthAsking(std::uint64_t rows) const { return CountPatients(library_) / kWorthAsking > rows; }

void ArchiveMatcher::AskFor(std::vector<std::string> codes, std::vector<std::string> fiscalCodes) {
    Close();
    const bool unique = Ask(healthCard_, "NumTesseraSanitaria", codes) &&
                        Ask(assisted_, "NumAssistito", std::move(codes)) &&
                        Ask(fiscalCode_, "CodiceFiscale", std::move(fiscalCodes));
    if (!unique) Close();
}

bool ArchiveMatcher::Ask(Index& index, const char* column, std::vector<std::string> values) {
    std::erase_if(values, [](const std::string& value) {
        return value.empty() || value.size() > kLongestCode || value.find('\0') != std::string::npos;
    });
    for (std::string& value : values) value = text::FoldCase(value);  // each patient is to come once
    std::sort(values.begin(), values.end());
    values.erase(std::unique(values.begin(), values.end()), values.end());
    for (std::size_t first = 0; first < values.size() || first == 0; first += kKeysOfAStatement) {
        const std::string condition =
            values.empty() ? "1 = 0" : std::string(column) + " IN (" + KeyList(library_.Utility(), values, first) + ")";
        const data::RecordsetPtr found = library_.RequireConnection().Open("SELECT IDPaziente, " + std::string(column) +
                                                                           " FROM Paziente WHERE " + condition);
        if (index.rows == nullptr) {
            kept_.push_back(data::MemoryRecordset::CopyOf(*found));
            index = {kept_.back().get(), 1};
        } else {
            index.rows->Append(*found);
        }
    }
    return !index.rows->Repeats(index.ordinal);
}

void ArchiveMatcher::Close() {
    kept_.clear();
    healthCard_ = assisted_ = fiscalCode_ = {};
}

}  // namespace vlm
