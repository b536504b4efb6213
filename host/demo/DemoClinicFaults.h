#pragma once

#include <span>

#include "DemoClinicServices.h"

namespace vlm::host {

/// How many patients at the end of a Sicilian clinic's list are kept for faults.
constexpr int kFaultyPatients = 10;

/// What a run's checks find, each fault at least once, in the faulty branch's last month. Sicilian faults are missing
/// data of patient, document or service; Apulian ones are dates that do not agree. A missing service date cannot be
/// shown (no period would select the row), nor a clinic without health authority.
class DemoClinicFaults {
public:
    DemoClinicFaults(const DemoClinicProfile& clinic, DemoClinicServices& services, DemoClinicDocuments& documents)
        : clinic_(clinic), services_(services), documents_(documents) {}

    /// Takes data away from the patients kept for it; nothing outside Sicily. Before they are written.
    static void SpoilPatients(const DemoClinicProfile& clinic, std::span<DemoPatient> kept);

    /// `sound`: patients without fault; `spoilt`: those of SpoilPatients.
    void Fill(DemoMonth month, std::span<const DemoPatient> sound, std::span<const DemoPatient> spoilt);

private:
    void FillSicilia(std::span<const DemoPatient> sound, std::span<const DemoPatient> spoilt);
    void FillPuglia(std::span<const DemoPatient> sound);
    DemoDocument Sound(const DemoPatient& patient, bool cyclic);

    const DemoClinicProfile& clinic_;
    DemoClinicServices& services_;
    DemoClinicDocuments& documents_;
    Date day_;
};

}  // namespace vlm::host
