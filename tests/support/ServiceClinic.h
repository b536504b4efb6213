#pragma once

#include <string>
#include <vector>

#include "database/Connection.h"
#include "support/Insertion.h"
#include "support/TempFolder.h"
#include "support/Words.h"

namespace vlm::test {

/// What a run of the reference host gave.
struct HostRun {
    int status = 0;
    Lines events;  // JSON, one object a line
    std::string errors;

    Lines Of(const std::string& kind) const;
};

HostRun RunReferenceHost(const Lines& arguments);

/// A row of the services view; every column has a value of its own, but for the changes; see ColumnsOf.
inline SqlRow Service(const std::string& changes = {}) { return ColumnsOf("IDPaziente=1; " + changes); }
/// For a clinic with none of what it is a clinic of.
inline const std::vector<SqlRow> kNoRows;

/// A clinic with a handful of billed services, and the host that runs on it.
class ServiceClinic {
public:
    std::string numeroASL = "'201'";
    std::string codiceDistretto = "'03'";
    int idRegioneTariffario = 19;
    int clinic = 12;
    std::string masterSql;  // run in the master database after everything else
    std::string extraSql;   // run in the clinic's database after everything else
    std::string today = "2011-04-10";

    ServiceClinic();
    explicit ServiceClinic(const std::vector<SqlRow>& services) : ServiceClinic() { Create(services); }
    /// Writes the databases; once.
    void Create(const std::vector<SqlRow>& services);

    /// Writes the database of another clinic beside them, made by statements.
    void CreateDatabase(int number, const std::string& sql) const;

    /// What the host is told before the steps, to run a component in this clinic.
    Lines Arguments(const std::string& component) const;
    HostRun Run(const Lines& steps, const std::string& component = "ASLExport") const;
    /// A connection of somebody else's to the clinic's database.
    vlm::data::ConnectionPtr Connect() const;
    /// One row of texts for each row of a query in the clinic's database, joined by "|"; see RowText.
    Lines Query(const std::string& sql) const;

    TempFolder folder;
    std::string data, work, out, settings;
};

}  // namespace vlm::test
