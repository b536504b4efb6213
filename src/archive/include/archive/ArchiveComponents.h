#pragma once

#include "frame/HostServices.h"
#include "system/Clock.h"

namespace vlm::archive {

/// The host's components that the library brings along: records, fiscal codes and parameters straight in the host's
/// tables. The client of the health-card system is the host's own; without it making one throws Error.
class ArchiveComponents : public HostComponents {
public:
    /// `clock` must live as long as what is made here.
    explicit ArchiveComponents(const sys::Clock& clock) : clock_(clock) {}

    std::unique_ptr<HostRecord> NewPatientRecord() override;
    std::unique_ptr<HostRecord> NewExemptionRecord() override;
    std::unique_ptr<FiscalCodeDecoder> NewFiscalCodeDecoder() override;
    std::unique_ptr<ParameterStore> NewParameterStore() override;
    std::unique_ptr<HealthCardClient> NewHealthCardClient() override;

private:
    const sys::Clock& clock_;
};

}  // namespace vlm::archive
