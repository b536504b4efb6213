#pragma once

#include "frame/HostServices.h"
#include "system/Clock.h"

namespace vlm::host {

/// The components that the reference host has.
class ReferenceHostComponents : public HostComponents {
public:
    /// `clock` must live as long as what is made here.
    explicit ReferenceHostComponents(const sys::Clock& clock) : clock_(clock) {}

    std::unique_ptr<HostRecord> NewPatientRecord() override;
    std::unique_ptr<HostRecord> NewExemptionRecord() override;
    std::unique_ptr<FiscalCodeDecoder> NewFiscalCodeDecoder() override;
    std::unique_ptr<ParameterStore> NewParameterStore() override;
    std::unique_ptr<HealthCardClient> NewHealthCardClient() override;

private:
    const sys::Clock& clock_;
};

}  // namespace vlm::host
