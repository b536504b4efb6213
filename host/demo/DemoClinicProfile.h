#pragma once

#include <span>
#include <string>
#include <string_view>

namespace vlm::host {

enum class DemoRegion { Sicilia, Puglia };

/// A service of the region's tariff: code (with its points), the clinic's own code and price in cents. A cyclic service
/// is one session of a course of treatment.
struct DemoTariff {
    std::string_view code, internalCode;
    int cents;
    bool cyclic = false;
};

struct DemoBranch {
    int id;
    std::string_view name;
    int code;  // the branch's number in the national list
    std::span<const DemoTariff> tariffs;
};

struct DemoSpecialist {
    int id;
    std::string_view surname, name, regionalCode;
};

struct DemoAssignment {
    int branch, specialist;
};

/// A town in which patients of the demo live.
struct DemoTown {
    std::string_view istat, cap;
};

/// What makes one clinic of the demo. `provinces` are the first three digits of its region's ISTAT codes, `patientASL`
/// the health authorities of its patients.
struct DemoClinicProfile {
    int idStudio;
    DemoRegion region;
    int idRegioneTariffario;
    std::string_view regionCode, numeroASL, districtCode, company, name;
    std::span<const std::string_view> provinces, patientASL;
    std::span<const DemoTown> towns;
    std::span<const DemoSpecialist> specialists;
    std::span<const DemoAssignment> assignments;

    /// The specialists of one branch: never none.
    int SpecialistOf(int branch, int choice) const;
    /// "Studio0012": the clinic's number in four digits.
    std::string DatabaseName() const;
};

/// The branch whose last month is without fault, and the one whose last month shows every fault a run can find.
constexpr int kCleanBranch = 1;
constexpr int kFaultyBranch = 2;

std::span<const DemoBranch> DemoBranches();
/// The clinics that have a database of their own.
std::span<const DemoClinicProfile> DemoProfiles();

}  // namespace vlm::host
