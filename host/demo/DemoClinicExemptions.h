#pragma once

#include <span>
#include <string_view>

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

}  // namespace vlm::host
