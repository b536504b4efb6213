#include "DemoClinicServices.h"

#include <algorithm>

#include "DemoCatalogues.h"
#include "values/Number.h"

namespace vlm::host {

namespace {

constexpr std::int64_t kCent = Currency::kScale / 100;
constexpr std::int64_t kHighestQuota = 3615 * kCent;  // the patient pays at most 36,15 euro a prescription
constexpr std::int64_t kPrescriptionQuota = 10 * Currency::kScale;  // and 10 euro more on a dear one
constexpr std::int64_t kDear = 50 * Currency::kScale;

std::string DayOrEmpty(const std::optional<Date>& date) { return date ? IsoDate(*date) : std::string(); }

std::string Moment(const DemoDocument& document) {
    std::string moment = IsoDate(document.day);
    if (document.secondOfDay == 0) return moment;
    for (int part : {document.secondOfDay / 3600, document.secondOfDay / 60 % 60, document.secondOfDay % 60}) {
        moment += moment.size() == 10 ? ' ' : ':';
        moment += text::FormatZeros(part, 2);
    }
    return moment;
}

/// Services of a document; most have few, some as many as fit.
constexpr int kSizes[] = {1, 1, 1, 1, 2, 2, 2, 3, 3, 3, 4, 4, 5, 6, 7, 8, 9};
constexpr int kApulianLimit = 8;  // a prescription of Puglia has room for eight services
constexpr int kSunday = 7;

bool HasCycles(const DemoBranch& branch) {
    return std::any_of(branch.tariffs.begin(), branch.tariffs.end(), [](const DemoTariff& one) { return one.cyclic; });
}

}  // namespace

DemoClinicDocuments::DemoClinicDocuments(DatabaseWriter& writer, const DemoClinicProfile& clinic)
    : clinic_(clinic),
      documentRows_(writer, "Parcella",
                    "IDParcella,DataAiFiniConvenzione,ElaborataASL,IDPosizioneContabile,IDTipoOperazione,"
                    "IDSpecialista,IDBrancaPerStudio,ProgressivoRicetta,CodiceBranca,IDPaziente,IDMedico,"
                    "IDPartecipazioneSpesa,IDTipoDocumento,PrefissoNumerazione,NumeroDocumento,DataDocumento,"
                    "NumRicetta1,NumRicetta2,DataRilascioRicetta,IDPrioritaRicetta,IDTipoAccesso,IDTipoRichiesta,"
                    "PrescrizioneGarantita,DataPrenotazione,DataContatto,DataPrimaDisponibilita,DataAssegnata,"
                    "DataRefertazione,DataInizioCiclo,TotTicketEuro,TotQuotaPazienteTicketEuro,QuotaRicettaEuro"),
      serviceRows_(writer, "Prestazione",
                   "IDParcella,Riga,CodicePrestazioneTariffario,CodicePrestazione,Quantita,TotaleEuro,"
                   "PrestazioneCiclica") {}

Currency DemoClinicDocuments::CostOf(const DemoService& service) {
    return Currency::FromUnits(std::int64_t{service.tariff->cents} * std::max(service.quantity, 1) * kCent);
}

DemoClinicDocuments::Totals DemoClinicDocuments::TotalsOf(const DemoDocument& document) const {
    Totals totals;
    for (const DemoService& service : document.services) totals.gross += CostOf(service);
    if (document.share != kPaysTicket) return totals;
    totals.quota = std::min(totals.gross, Currency::FromUnits(kHighestQuota));
    if (totals.gross >= Currency::FromUnits(kDear)) totals.prescription = Currency::FromUnits(kPrescriptionQuota);
    return totals;
}

int DemoClinicDocuments::NextNumber(const DemoDocument& document) {
    const int year = document.day.ToCivil().year;
    if (year != year_) invoices_ = receipts_ = 0;
    year_ = year;
    return document.invoice ? ++invoices_ : ++receipts_;
}

void DemoClinicDocuments::AddServices(const DemoDocument& document) {
    int line = 0;
    for (const DemoService& service : document.services) {
        // Puglia falls back on the clinic's own code, so its tariff code may be missing.
        const bool ownCode = clinic_.region == DemoRegion::Puglia && services_ % 40 == 0;
        const std::string_view own =
            clinic_.region == DemoRegion::Puglia ? service.tariff->code : service.tariff->internalCode;
        serviceRows_.Add({lastKey_, ++line,
                          OrNull(service.withCode && !ownCode ? service.tariff->code : std::string_view()),
                          OrNull(service.withCode ? own : std::string_view()), OrNull(service.quantity),
                          CostOf(service), service.tariff->cyclic});
        ++services_;
    }
}

void DemoClinicDocuments::Add(const DemoDocument& document, const DemoPatient& patient) {
    ++lastKey_;
    const Totals totals = TotalsOf(document);
    const std::string first =
        std::string(clinic_.regionCode) + text::FormatZeros(document.day.ToCivil().year % 100, 2) + "40";
    const std::string second = text::FormatZeros(100000000 + lastKey_, 9);
    const auto prescription = [&](const std::string& part) {
        return OrNull(document.withPrescription ? std::string_view(part) : std::string_view());
    };
    documentRows_.Add(
        {lastKey_,
         Moment(document),
         document.processed < 0 ? DatabaseWriter::Cell(nullptr) : DatabaseWriter::Cell(document.processed),
         document.accounting,
         document.operation,
         OrNull(document.specialist),
         document.branch,
         OrNull(document.sequence),
         OrNull(document.branchCode),
         patient.id,
         OrNull(document.doctor),
         OrNull(document.share),
         document.invoice ? 1 : 2,
         OrNull(document.invoice ? std::string_view("A") : std::string_view()),
         NextNumber(document),
         IsoDate(document.day),
         prescription(first),
         prescription(second),
         OrNull(DayOrEmpty(document.issued)),
         OrNull(document.priority),
         OrNull(document.access),
         OrNull(document.request),
         document.guaranteed,
         OrNull(DayOrEmpty(document.booked)),
         OrNull(DayOrEmpty(document.contact)),
         OrNull(DayOrEmpty(document.firstFree)),
         OrNull(DayOrEmpty(document.assigned)),
         OrNull(DayOrEmpty(document.reported)),
         OrNull(DayOrEmpty(document.cycleStart)),
         totals.gross,
         totals.quota,
         totals.prescription});
    AddServices(document);
}

DemoMonth DemoMonth::Plus(int months) const {
    const int count = year * 12 + month - 1 + months;
    return {count / 12, count % 12 + 1};
}

std::vector<Date> DemoMonth::WorkingDays() const {
    std::vector<Date> days;
    const Date end = Plus(1).First();
    for (Date day = First(); day < end; day = Date(day.Serial() + 1))
        if (DayOfWeek(day) != kSunday) days.push_back(day);
    return days;
}

DemoMonth DemoMonth::Before(Date today) {
    const Date::Civil civil = today.ToCivil();
    return DemoMonth{civil.year, civil.month}.Plus(-1);
}

void DemoClinicServices::Fill(DemoClinicDocuments& documents, DemoMonth last, Volume volume) {
    const auto cells = static_cast<std::int64_t>(kDemoMonths * DemoBranches().size());
    std::int64_t cell = 0;
    for (int age = kDemoMonths - 1; age >= 0; --age) {
        for (const DemoBranch& branch : DemoBranches()) {
            const std::int64_t before = volume.services * cell / cells;
            const std::int64_t after = volume.services * ++cell / cells;
            FillBranch(documents, branch, age, last.Plus(-age), {after - before, volume.unprocessed});
        }
    }
}

std::vector<int> DemoClinicServices::DocumentSizes(std::int64_t services) {
    const int limit = clinic_.region == DemoRegion::Puglia ? kApulianLimit : kSizes[std::size(kSizes) - 1];
    std::vector<int> sizes;
    while (services > 0) {
        const auto size = static_cast<int>(std::min<std::int64_t>({random_.Of(kSizes), limit, services}));
        sizes.push_back(size);
        services -= size;
    }
    return sizes;
}

void DemoClinicServices::FillBranch(DemoClinicDocuments& documents, const DemoBranch& branch, int age, DemoMonth month,
                                    Volume volume) {
    const std::vector<int> sizes = DocumentSizes(volume.services);
    const std::vector<Date> days = month.WorkingDays();
    int sequence = 0;
    for (std::size_t i = 0; i < sizes.size(); ++i) {
        const DemoPatient& patient = random_.Of(patients_);
        const bool cyclic = HasCycles(branch) && random_.Percent(50);
        DemoDocument document = Sound(branch, patient, days[i * days.size() / sizes.size()], cyclic, sizes[i]);
        if (volume.unprocessed) {
            document.processed = random_.Percent(50) ? 0 : -1;
        } else {
            document.processed = ProcessedAt(age);
            document.accounting = random_.Percent(90) ? 2 : 1;
        }
        if (document.processed == 1 && clinic_.region == DemoRegion::Puglia) document.sequence = ++sequence;
        documents.Add(document, patient);
    }
}

/// `age`: months before the last one. The last month waits for its export, of the month before a part was left over.
int DemoClinicServices::ProcessedAt(int age) {
    if (age > 1 || (age == 1 && random_.Percent(70))) return 1;
    return random_.Percent(50) ? 0 : -1;
}

DemoDocument DemoClinicServices::Sound(const DemoBranch& branch, const DemoPatient& patient, Date day, bool cyclic,
                                       int services) {
    DemoDocument document;
    document.branch = branch.id;
    document.branchCode = branch.code;
    document.specialist = clinic_.SpecialistOf(branch.id, random_.Below(12));
    document.doctor = random_.Percent(85) ? random_.Between(1, kDoctors) : 0;
    document.share = patient.exemption;
    document.day = day;
    if (random_.Percent(40)) document.secondOfDay = random_.Between(8 * 3600, 19 * 3600);
    document.operation = random_.Percent(92) ? 1 : random_.Percent(70) ? 2 : 3;
    document.invoice = random_.Percent(40);
    SetDates(document, cyclic);
    SetServices(document, branch, cyclic, services);
    return document;
}

void DemoClinicServices::SetDates(DemoDocument& document, bool cyclic) {
    document.booked = Date(document.day.Serial() - random_.Between(1, 60));
    if (clinic_.region != DemoRegion::Puglia) return;
    document.issued = Date(document.booked->Serial() - random_.Between(0, 10));
    document.contact = document.booked;
    document.firstFree = Date(document.day.Serial() - random_.Between(0, 1));
    document.assigned = document.reported = document.day;
    if (cyclic) document.cycleStart = Date(document.day.Serial() - random_.Between(7, 20));
    document.priority = random_.Between(0, 4);
    document.access = random_.Percent(85) ? 1 : random_.Between(2, 3);
    document.request = random_.Percent(80) ? 1 : 3;
    document.guaranteed = random_.Percent(30);
}

/// Different services of one kind, all sessions of a cycle or none.
void DemoClinicServices::SetServices(DemoDocument& document, const DemoBranch& branch, bool cyclic, int count) {
    std::vector<const DemoTariff*> choice;
    for (const DemoTariff& tariff : branch.tariffs)
        if (tariff.cyclic == cyclic) choice.push_back(&tariff);
    const auto start = static_cast<std::size_t>(random_.Below(static_cast<int>(choice.size())));
    for (int i = 0; i < count; ++i) {
        const int once = random_.Percent(4) ? 0 : random_.Percent(5) ? 2 : 1;
        const int quantity = cyclic ? random_.Between(5, 10) : once;
        document.services.push_back({choice[(start + static_cast<std::size_t>(i)) % choice.size()], quantity, true});
    }
}

}  // namespace vlm::host
