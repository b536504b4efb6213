#pragma once

#include <cstdint>
#include <filesystem>
#include <functional>
#include <string>

#include "databases/OdbcServer.h"
#include "values/Date.h"

namespace vlm::host {

/// The host's installation folder beside the databases: templates in `Import`, the health-card system's answer.
constexpr const char* kInstallationFolder = "Installazione";
/// Lists as a health authority sends them.
constexpr const char* kSourcesFolder = "Sorgenti";

struct DemoOptions {
    /// A list of comuni in place of the one built into the program.
    std::filesystem::path comuniCsv;
    /// The same seed and day give the same data.
    std::uint64_t seed = 20110301;
    /// For measuring: this many services in each clinic (a million is meant), none of them exported yet and none with
    /// a fault, so that one monthly run with earlier periods takes them all. 0 makes the ordinary demo.
    std::int64_t serviceRows = 0;
};

/// Creates the databases of the demo clinics in a folder, which is created when it is missing: `Aldra`, `Studio0012`
/// (Sicily) and `Studio0016` (Puglia), with the work of the 24 months before `today`'s month. Beside them the folders
/// `Installazione` (import templates, the health-card system's answer) and `Sorgenti` (lists to import). Throws Error,
/// naming it, when one of them is there already; an error leaves the folder as it was.
void CreateDemo(const std::filesystem::path& folder, Date today, const DemoOptions& options = {});

/// Told when a database is whole, with the number of its rows.
using DatabaseMade = std::function<void(const std::string& database, std::int64_t rows)>;

/// Creates the same databases, with the same rows, on a server that speaks T-SQL. `Installazione` and `Sorgenti` are
/// written into `folder`, unless it is "". Throws Error, naming it, when one of them is there already; an error leaves
/// server and folder as they were.
void CreateDemoOnServer(const OpenDatabase& open, const std::filesystem::path& folder, Date today,
                        const DatabaseMade& made, const DemoOptions& options = {});

}  // namespace vlm::host
