#pragma once

#include <cstdint>
#include <optional>
#include <span>
#include <string>
#include <vector>

#include "DemoClinicPatients.h"
#include "DemoClinicProfile.h"
#include "DemoClinicRandom.h"
#include "databases/DatabaseWriter.h"
#include "values/Currency.h"
#include "values/Date.h"

namespace vlm::host {

constexpr int kDoctors = 40;  // prescribing doctors of a clinic

struct DemoService {
    const DemoTariff* tariff = nullptr;
    int quantity = 1;      // 0 is written as null and counts as one
    bool withCode = true;  // without, the service has neither tariff code nor internal code
};

/// A billing document with its services. Keys that are 0 and dates that are missing are written as nulls.
struct DemoDocument {
    int specialist = 0, branch = 0, branchCode = 0, doctor = 0, share = 0;
    Date day;             // of the services
    int secondOfDay = 0;  // 0: the date has no time of day
    int processed = 0;    // ElaborataASL; -1 for null
    int accounting = 2, operation = 1;
    int sequence = 0;  // of the prescription in the run that exported it
    bool invoice = false, withPrescription = true;
    int priority = 0, access = 0, request = 0;
    bool guaranteed = false;
    std::optional<Date> issued, booked, contact, firstFree, assigned, reported, cycleStart;
    std::vector<DemoService> services;
};

/// Writes documents in their order, numbers them and works out what they cost.
class DemoClinicDocuments {
public:
    DemoClinicDocuments(DatabaseWriter& writer, const DemoClinicProfile& clinic);
    void Add(const DemoDocument& document, const DemoPatient& patient);
    std::int64_t Services() const { return services_; }

private:
    struct Totals {
        Currency gross, quota, prescription;
    };
    static Currency CostOf(const DemoService& service);
    Totals TotalsOf(const DemoDocument& document) const;
    void AddServices(const DemoDocument& document);
    int NextNumber(const DemoDocument& document);

    const DemoClinicProfile& clinic_;
    DatabaseWriter::Rows documentRows_, serviceRows_;
    std::int64_t lastKey_ = 0, services_ = 0;
    int year_ = 0, invoices_ = 0, receipts_ = 0;
};

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
