#include "DemoClinicExemptions.h"

namespace vlm::host {

namespace {

constexpr DemoExemptionType kTypes[] = {
    {1, "Esenzione per reddito", 1}, {2, "Non esente", 2}, {3, "Esenzione per patologia", 3}, {4, "Invalidità", 1}};

constexpr DemoExemption kExemptions[] = {
    {1, "E01", 1, 6, 65, 1}, {2, "E02", 1, 0, 0, 1},     {3, "E03", 1, 0, 0, 1},       {4, "E04", 1, 0, 60, 1},
    {5, "E05", 1, 0, 0, 1},  {6, "013.250", 3, 0, 0, 2}, {7, "0A31", 3, 0, 0, 2},      {8, "048", 3, 0, 0, 2},
    {9, "C01", 4, 0, 0, 3},  {10, "G01", 4, 0, 0, 5},    {kPaysTicket, "", 2, 0, 0, 0}};

}  // namespace

std::span<const DemoExemptionType> DemoExemptionTypes() { return kTypes; }
std::span<const DemoExemption> DemoExemptions() { return kExemptions; }

}  // namespace vlm::host
