#pragma once

#include <functional>
#include <memory>
#include <string>

#include "automation/Ref.h"
#include "frame/HostServices.h"

namespace vlm::host {

/// Stands in for the client of the health-card system: its answer is the file `SistemaTS.json` of the host's
/// installation folder, whoever asks.
///
///     {"error": false, "errors": [{"code": "E01", "description": "..."}],
///      "persons": [{"fiscalCode": "...", "surname": "...", "firstName": "...",
///                   "choice": "2011-01-01T00:00:00", "expiry": "...", "suspension": "...",
///                   "exemptions": [{"code": "E01", "start": "2012-01-01T00:00:00", "end": "2012-12-31T23:00:00"}]}]}
///
/// What is missing or null is empty; anything else is an Error that names the file.
class HealthCardFile final : public HealthCardClient {
public:
    /// The tool stands in the installation folder.
    void SetToolPath(const std::string& path) override;
    void SetCertificatePath(const std::string&) override {}
    Response RequestPatients(const Credentials&) override { return Read(); }
    Response RequestExemptions(const Credentials&) override { return Read(); }

private:
    Response Read() const;

    std::string folder_;
};

/// What this host hands in of services of its own, as an automation object: HealthCardClient, by way of what `make`
/// makes, and HealthCardRequest.
com::Ref<IDispatch> MakeHealthCardServices(std::function<std::unique_ptr<HealthCardClient>()> make);

}  // namespace vlm::host
