#pragma once

#include <cstdint>
#include <span>
#include <vector>

#include "DemoClinicDocuments.h"
#include "demo/DemoClinicPatients.h"
#include "demo/DemoClinicProfile.h"
#include "demo/DemoClinicRandom.h"

namespace vlm::host {

constexpr int kDemoMonths = 24;

/// A month of a year, and months counted from it.
struct DemoMonth {
    int year = 0, month = 0;
    DemoMonth Plus(int months) const;
    Date First() const { return *Date::FromYmd(year, month, 1); }
    /// Its days but Sundays.
    std::vector<Date> WorkingDays() const;
    /// The month before a day's month.
    static DemoMonth Before(Date today);
};

/// The clinic's work of the last months, each branch in each month. None of it has a fault.
class DemoClinicServices {
public:
    struct Volume {
        std::int64_t services;
        /// For measuring: nothing has been exported yet and every document may follow in a later month's run.
        bool unprocessed;
    };

    DemoClinicServices(const DemoClinicProfile& clinic, std::span<const DemoPatient> patients, DemoClinicRandom random)
        : clinic_(clinic), patients_(patients), random_(random) {}

    /// Writes exactly the services asked for, spread over the kDemoMonths months that end with `last`.
    void Fill(DemoClinicDocuments& documents, DemoMonth last, Volume volume);

    /// A document without fault, for a patient without fault.
    DemoDocument Sound(const DemoBranch& branch, const DemoPatient& patient, Date day, bool cyclic, int services);

private:
    void FillBranch(DemoClinicDocuments& documents, const DemoBranch& branch, int age, DemoMonth month, Volume volume);
    std::vector<int> DocumentSizes(std::int64_t services);
    void SetServices(DemoDocument& document, const DemoBranch& branch, bool cyclic, int count);
    void SetDates(DemoDocument& document, bool cyclic);
    int ProcessedAt(int age);

    const DemoClinicProfile& clinic_;
    std::span<const DemoPatient> patients_;
    DemoClinicRandom random_;
};

}  // namespace vlm::host
