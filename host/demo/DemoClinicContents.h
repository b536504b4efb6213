#pragma once

#include <cstdint>
#include <filesystem>
#include <span>

#include "databases/DatabaseWriter.h"
#include "demo/DemoClinic.h"
#include "demo/DemoClinicComuni.h"
#include "demo/DemoClinicPatients.h"
#include "demo/DemoClinicProfile.h"
#include "demo/DemoClinicRandom.h"

namespace vlm::host {

/// What stands in the databases of the demo and beside them, wherever they are kept.
class DemoClinicContents {
public:
    /// `today` without its time. Throws Error naming the list of comuni that cannot be read.
    DemoClinicContents(Date today, const DemoOptions& options);

    /// Makes the whole database in one transaction: tables, rows, indices.
    void WriteMaster(DatabaseWriter& writer) const;
    void WriteClinic(DatabaseWriter& writer, const DemoClinicProfile& clinic) const;
    /// The lists are those of the first clinic: of its patients, and of others who chose its doctors.
    void WriteFiles(const std::filesystem::path& folder) const;

private:
    /// Each part of the data draws from a stream of its own.
    DemoClinicRandom Random(const DemoClinicProfile& clinic, std::uint64_t stream) const;
    void FillDocuments(DatabaseWriter& writer, const DemoClinicProfile& clinic, std::span<const DemoPatient> sound,
                       std::span<const DemoPatient> spoilt) const;
    bool Ordinary() const { return options_.serviceRows <= 0; }

    DemoOptions options_;
    Date today_;
    DemoClinicComuni comuni_;
};

}  // namespace vlm::host
