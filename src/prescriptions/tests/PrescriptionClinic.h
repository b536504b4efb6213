#pragma once

#include "support/Events.h"
#include "support/Insertion.h"
#include "support/ServiceClinic.h"

namespace vlm::test {

/// A row of the procedure: every column has a value of its own, but for the changes. Branch 2, specialist 9.
SqlRow Prescription(const std::string& id, const std::string& changes = {});

/// A clinic with a handful of drug prescriptions, and the host that runs on it. Branch 1 has the specialists 7 and 8,
/// branch 2 the specialist 9.
class PrescriptionClinic : public ServiceClinic {
public:
    PrescriptionClinic() = default;
    explicit PrescriptionClinic(const std::vector<SqlRow>& prescriptions) { Create(prescriptions); }

    /// The procedure's row sets, one for each statement.
    Lines procedure = {"SELECT * FROM RicettaFarmaci WHERE IDRicettaFarmaci = ?1"};

    void Create(const std::vector<SqlRow>& prescriptions);

    /// Exports branch 2 from 01/03/2011 to 31/03/2011 to `File()`, after further steps.
    HostRun Export(const Lines& more = {}) const;
    HostRun Show(const Lines& steps) const { return Run(steps, "ASLPanoramico"); }
    std::string File() const { return out + "/ricette.txt"; }
};

}  // namespace vlm::test
