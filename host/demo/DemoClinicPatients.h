#pragma once

#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "DemoClinicComuni.h"
#include "DemoClinicProfile.h"
#include "DemoClinicRandom.h"
#include "databases/DatabaseWriter.h"
#include "values/Date.h"

namespace vlm::host {

constexpr int kConsentAnonymous = 1;
constexpr int kConsentNamed = 2;

/// A patient of the demo. Empty texts, no date, sex 0 and no town are written as nulls (no residence at all without a
/// town).
struct DemoPatient {
    int id = 0;
    std::string surname, name, fiscalCode, healthCard, assistedNumber, doctorCode, numeroASL;
    std::string_view sex;  // "M" or "F"
    std::optional<Date> birth, choice, revoked;
    int birthComune = 0, homeComune = 0;
    std::string_view homeCap;
    int consent = kConsentNamed;
    int exemption = 0;
    int revocationKind = 0;
};

/// Patients 1 to `count` of a clinic, each complete and with a lawful fiscal code that no other has.
std::vector<DemoPatient> MakePatients(const DemoClinicProfile& clinic, const DemoClinicComuni& comuni, int count,
                                      Date today, DemoClinicRandom random);

/// Writes the patients with their residences and exemptions.
void FillPatients(DatabaseWriter& writer, const DemoClinicProfile& clinic, std::span<const DemoPatient> patients,
                  Date today);

}  // namespace vlm::host
