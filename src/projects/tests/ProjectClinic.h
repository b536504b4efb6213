#pragma once

#include "support/Events.h"
#include "support/Insertion.h"
#include "support/ServiceClinic.h"

namespace vlm::test {

/// A row of the projects' view: every column has a value of its own, but for the changes. `project` is the
/// authorisation's number.
SqlRow Project(const std::string& project, const std::string& changes = {});

/// Centres with a handful of projects, and the host that runs on the one of clinic 12.
class ProjectClinic : public ServiceClinic {
public:
    using Centres = std::map<int, std::vector<SqlRow>>;

    ProjectClinic() = default;
    explicit ProjectClinic(const Centres& centres) { Create(centres); }

    std::string teamless;  // centres without a team, as a list for SQL

    /// Writes the databases of the centres; clinic 12 is always one of them.
    void Create(const Centres& centres);

    HostRun Show(const Lines& steps) const { return Run(steps, "ExportProgetti"); }
    /// Exports the first two quarters of 2011 to `out`, after further steps.
    HostRun Export(const Lines& more = {}) const;
    std::string File(const std::string& centre = "00") const { return out + "/S201101201102" + centre + ".txt"; }
    std::string Content(const std::string& centre = "00") const { return ReadBytes(File(centre)); }
    /// The numbers of the projects in the file, joined by blanks.
    std::string Projects(const std::string& centre = "00") const;
};

}  // namespace vlm::test
