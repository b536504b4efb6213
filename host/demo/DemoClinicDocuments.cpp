#include "DemoClinicDocuments.h"

#include <algorithm>

#include "DemoClinicExemptions.h"
#include "values/Number.h"

namespace vlm::host {

namespace {

constexpr std::int64_t kCent = Currency::kScale / 100;
constexpr std::int64_t kHighestQuota = 3615 * kCent;  // the patient pays at most 36,15 euro a prescription
constexpr std::int64_t kPrescriptionQuota = 10 * Currency::kScale;  // and 10 euro more on a dear one
constexpr std::int64_t kDear = 50 * Currency::kScale;

std::string IsoOrEmpty(const std::optional<Date>& date) { return date ? IsoDate(*date) : std::string(); }

std::string Moment(const DemoDocument& document) {
    std::string moment = IsoDate(document.day);
    if (document.secondOfDay == 0) return moment;
    for (int part : {document.secondOfDay / 3600, document.secondOfDay / 60 % 60, document.secondOfDay % 60}) {
        moment += moment.size() == 10 ? ' ' : ':';
        moment += text::FormatZeros(part, 2);
    }
    return moment;
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
         OrNull(IsoOrEmpty(document.issued)),
         OrNull(document.priority),
         OrNull(document.access),
         OrNull(document.request),
         document.guaranteed,
         OrNull(IsoOrEmpty(document.booked)),
         OrNull(IsoOrEmpty(document.contact)),
         OrNull(IsoOrEmpty(document.firstFree)),
         OrNull(IsoOrEmpty(document.assigned)),
         OrNull(IsoOrEmpty(document.reported)),
         OrNull(IsoOrEmpty(document.cycleStart)),
         totals.gross,
         totals.quota,
         totals.prescription});
    AddServices(document);
}

}  // namespace vlm::host
