#pragma once

#include "automation/LateBound.h"
#include "frame/HostServices.h"

namespace vlm::server {

/// The host's own components, made and called by name. What the host does not make is made by `own`.
class HostFactory final : public HostComponents {
public:
    /// `own` outlives this object.
    HostFactory(com::Ref<IDispatch> factory, HostComponents& own) : factory_(std::move(factory)), own_(own) {}

    std::unique_ptr<HostRecord> NewPatientRecord() override;
    std::unique_ptr<HostRecord> NewExemptionRecord() override;
    std::unique_ptr<FiscalCodeDecoder> NewFiscalCodeDecoder() override;
    std::unique_ptr<ParameterStore> NewParameterStore() override;
    std::unique_ptr<HealthCardClient> NewHealthCardClient() override;

private:
    com::LateBound factory_;
    HostComponents& own_;
};

}  // namespace vlm::server
