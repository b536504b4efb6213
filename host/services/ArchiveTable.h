#pragma once

#include <string>
#include <string_view>

namespace vlm::host {

/// A table of the archive whose rows are records that one user at a time works on.
struct ArchiveTable {
    std::string_view name;
    std::string_view key;      // the column that numbers its records
    std::string_view subject;  // how a sentence speaks of a record
    std::string_view locked;   // "bloccato", in the subject's gender
};

inline constexpr ArchiveTable kPatients = {"Paziente", "IDPaziente", "Il paziente", "bloccato"};
inline constexpr ArchiveTable kPatientExemptions = {"EsenzionePerPaziente", "IDEsenzionePerPaziente",
                                                    "L'esenzione del paziente", "bloccata"};

/// "Il paziente n. 12"
std::string RecordText(const ArchiveTable& table, std::int64_t key);
/// By name without regard to case; a table that is not known has records of no particular kind.
ArchiveTable ArchiveTableOf(std::string_view name);

}  // namespace vlm::host
