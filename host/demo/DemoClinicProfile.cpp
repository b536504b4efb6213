#include "DemoClinicProfile.h"

#include <algorithm>

#include "values/Number.h"

namespace vlm::host {

namespace {

constexpr DemoTariff kCardiology[] = {{"89.7", "CAR01", 2066},  {"89.52", "CAR02", 1162},   {"88.72.2", "CAR03", 6197},
                                      {"89.50", "CAR04", 6197}, {"89.41", "CAR05", 5578},   {"89.61.1", "CAR06", 4132},
                                      {"89.01", "CAR07", 1291}, {"88.73.5", "CAR08", 4390}, {"89.48.1", "CAR09", 2324}};
constexpr DemoTariff kRehabilitation[] = {
    {"93.11.1", "FKT01", 1085, true}, {"93.39.4", "FKT02", 310, true}, {"93.39.9", "FKT03", 1033, true},
    {"93.15", "FKT04", 620, true},    {"93.22", "FKT05", 878, true},   {"93.31.1", "FKT06", 1188, true},
    {"93.35.2", "FKT07", 155, true},  {"93.39.5", "FKT08", 232, true}, {"93.83", "FKT09", 1007, true},
    {"89.7", "FKT10", 2066},          {"93.01.1", "FKT11", 1549},      {"93.08.1", "FKT12", 1033},
    {"93.05.1", "FKT13", 1549},       {"93.04.1", "FKT14", 775},       {"93.09.1", "FKT15", 1033},
    {"93.02", "FKT16", 1085},         {"93.03", "FKT17", 1653},        {"89.01", "FKT18", 1291}};
constexpr DemoTariff kOphthalmology[] = {
    {"95.02", "OCU01", 2066},   {"95.09.1", "OCU02", 775}, {"95.05", "OCU03", 1679}, {"95.11", "OCU04", 929},
    {"95.12", "OCU05", 8005},   {"95.13", "OCU06", 1937},  {"95.26", "OCU07", 1033}, {"89.11", "OCU08", 671},
    {"95.03.3", "OCU09", 5165}, {"89.01", "OCU10", 1291}};

constexpr DemoBranch kBranches[] = {{1, "Cardiologia", 2, kCardiology},
                                    {2, "Medicina fisica e riabilitazione", 12, kRehabilitation},
                                    {3, "Oculistica", 16, kOphthalmology}};

constexpr std::string_view kSicilianProvinces[] = {"081", "082", "083", "084", "085", "086", "087", "088", "089"};
constexpr std::string_view kApulianProvinces[] = {"071", "072", "073", "074", "075", "110"};
constexpr std::string_view kSicilianASL[] = {"201", "202", "203", "204", "205", "206", "207", "208", "209"};
constexpr std::string_view kApulianASL[] = {"106", "112", "113", "114", "115", "116"};

constexpr DemoTown kSicilianTowns[] = {
    {"082053", "90133"}, {"087015", "95131"}, {"083048", "98122"}, {"089017", "96100"}, {"088009", "97100"},
    {"081021", "91100"}, {"084001", "92100"}, {"085004", "93100"}, {"086009", "94100"}, {"087004", "95024"},
    {"082006", "90011"}, {"081011", "91025"}, {"085007", "93012"}, {"088006", "97015"}, {"082027", "90015"},
    {"083084", "98076"}, {"081012", "91026"}, {"083024", "98030"}};
constexpr DemoTown kApulianTowns[] = {
    {"072006", "70121"}, {"075035", "73100"}, {"071024", "71121"}, {"073027", "74121"}, {"074001", "72100"},
    {"110009", "76125"}, {"110002", "76121"}, {"110001", "76123"}, {"072030", "70043"}, {"072004", "70022"},
    {"074012", "72017"}, {"075031", "73014"}, {"071029", "71043"}, {"071020", "71042"}, {"073013", "74015"},
    {"072029", "70056"}, {"071052", "71028"}, {"075060", "73053"}};

constexpr DemoSpecialist kSicilianSpecialists[] = {
    {1, "Cantù", "Nicolò", "190101"},      {2, "D'Amico", "Rosa", "190102"},
    {3, "Ferrara", "Salvatore", "190103"}, {4, "Lo Bianco", "Giuseppina", "190104"},
    {5, "Di Stefano", "Elia", "190105"},   {6, "Nicolosi", "Agata", "190106"}};
constexpr DemoSpecialist kApulianSpecialists[] = {
    {1, "De Carolis", "Niccolò", "160201"}, {2, "L'Abbate", "Teresa", "160202"},
    {3, "Lorusso", "Vito", "160203"},       {4, "Quarantù", "Loredana", "160204"},
    {5, "D'Ambrosio", "Cosimo", "160205"},  {6, "Spagnoletta", "Anna", "160206"}};
/// The third branch has one specialist; the fifth specialist works for two branches.
constexpr DemoAssignment kAssignments[] = {{1, 1}, {1, 2}, {1, 5}, {2, 3}, {2, 4}, {2, 5}, {3, 6}};

constexpr DemoClinicProfile kProfiles[] = {
    {12, DemoRegion::Sicilia, 19, "190", "201", "03", "Poliambulatorio", "San Calogero", kSicilianProvinces,
     kSicilianASL, kSicilianTowns, kSicilianSpecialists, kAssignments},
    {16, DemoRegion::Puglia, 13, "160", "114", "05", "Centro Medico", "Terra di Bari", kApulianProvinces, kApulianASL,
     kApulianTowns, kApulianSpecialists, kAssignments}};

}  // namespace

int DemoClinicProfile::SpecialistOf(int branch, int choice) const {
    const auto ofBranch = [&](const DemoAssignment& one) { return one.branch == branch; };
    const auto count = std::count_if(assignments.begin(), assignments.end(), ofBranch);
    auto skip = choice % count;
    for (const DemoAssignment& one : assignments)
        if (one.branch == branch && skip-- == 0) return one.specialist;
    return 0;
}

std::string DemoClinicProfile::DatabaseName() const {
    return std::string("Studio").append(text::FormatZeros(idStudio, 4));
}

std::span<const DemoBranch> DemoBranches() { return kBranches; }
std::span<const DemoClinicProfile> DemoProfiles() { return kProfiles; }

}  // namespace vlm::host
