#pragma once

#include <cstdint>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "database/MemoryRecordset.h"
#include "frame/Library.h"

namespace vlm {

/// Finds the archive's patients by what a source says of them. The archive is read once in a read, at the first
/// look-up, into a snapshot that answers from memory; of several patients with one code the first in the archive's own
/// order counts, and texts compare without regard to case, as the host's server does.
class ArchiveMatcher {
public:
    explicit ArchiveMatcher(const Library& library) : library_(library) {}

    /// IDPaziente, by health-card number, then by assisted number; 0 for none, for "" and for "(nullo)".
    std::int32_t FindPatientByCode(std::string_view code);
    /// 0 for none and for "".
    std::int32_t FindPatientByFiscalCode(std::string_view fiscalCode);

    /// Whether a source of so many rows is small enough against the archive to ask for its patients alone.
    bool IsWorthAsking(std::uint64_t rows) const;
    /// Reads only the patients that these codes and fiscal codes find; look-ups of others may miss them. Gives the same
    /// answers as the whole snapshot: where several patients share a code, the whole snapshot is left to decide.
    void AskFor(std::vector<std::string> codes, std::vector<std::string> fiscalCodes);

    /// Drops what was read.
    void Close();

private:
    /// The rows of one look-up and the column that it asks.
    struct Index {
        data::MemoryRecordset* rows = nullptr;
        int ordinal = -1;
    };

    void OpenSnapshot(bool withAssistedNumber);
    /// False when several patients share a value.
    bool Ask(Index& index, const char* column, std::vector<std::string> values);
    std::int32_t Find(const Index& index, std::string_view value) const;

    const Library& library_;
    std::vector<std::unique_ptr<data::MemoryRecordset>> kept_;
    Index healthCard_, assisted_, fiscalCode_;
};

}  // namespace vlm
