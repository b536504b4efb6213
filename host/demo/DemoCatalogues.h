#pragma once

#include <span>
#include <string_view>

#include "DemoClinicComuni.h"
#include "DemoClinicProfile.h"
#include "databases/DatabaseWriter.h"

/// What the clinics of the demo know before they work: the tables that are the same for all, and who works where.
namespace vlm::host {

/// How a patient shares in the cost of a service. `minAge` and `maxAge` bound the exemption to the young (up to
/// minAge) and the old (from maxAge); 0 is no bound.
struct DemoExemption {
    int id;
    std::string_view code;  // empty for a patient who pays
    int type;               // key of kDemoExemptionTypes
    int minAge, maxAge;
    int category;
};

struct DemoExemptionType {
    int id;
    std::string_view name;
    int ticketPosition;  // 1 exempt, 2 pays, 3 exempt for the illness
};

/// The patient who pays the ticket has an entry too: without one the ticket position would be missing.
constexpr int kPaysTicket = 20;

std::span<const DemoExemptionType> DemoExemptionTypes();
std::span<const DemoExemption> DemoExemptions();

/// Fills the master tables of a new `Aldra` database, whose schema is there: clinics (one of them without a team and
/// without a database), health authorities, months, comuni, exemptions, illnesses.
void FillMaster(DatabaseWriter& writer, const DemoClinicComuni& comuni);

/// The illnesses are numbered from 1; a prescription may also name one that is not in the table.
int DemoPathologyCount();

/// Fills what a clinic is, apart from its work: branches, specialists and their parameters, menu entries, the clinic's
/// region and health authority, the exemption catalogue.
void FillStaff(DatabaseWriter& writer, const DemoClinicProfile& clinic);

}  // namespace vlm::host
