#include "DemoClinicPrescriptions.h"

#include "DemoClinicMaster.h"

namespace vlm::host {

namespace {

constexpr std::string_view kDrugs[] = {"023993013", "028519015", "027948013", "023179045", "020582022",
                                       "028982039", "034128012", "026664033", "035679028", "012745093"};
constexpr int kPerMonth = 30;
constexpr int kOnSuggestion = 3;  // kind of request: another doctor suggested the drug

/// An illness, none, or now and then one that the table does not know.
int ChoosePathology(DemoClinicRandom& random) {
    if (random.Percent(15)) return 0;
    return random.Percent(3) ? 999 : random.Between(1, DemoPathologyCount());
}

}  // namespace

void FillPrescriptions(DatabaseWriter& writer, const DemoClinicProfile& clinic, std::span<const DemoPatient> patients,
                       DemoMonth last, DemoClinicRandom random) {
    DatabaseWriter::Rows rows(writer, "RicettaFarmaci",
                              "IDRicettaFarmaci,IDBrancaPerStudio,IDSpecialista,DataRicetta,IDPaziente,NumRicetta,"
                              "IDTipoRichiesta,CodiceAIC_1,IDPatologia_1,Quantita_1,CodiceAIC_2,IDPatologia_2,"
                              "Quantita_2,PrescrivibileSSN");
    int key = 0;
    for (int age = kDemoMonths - 1; age >= 0; --age) {
        const std::vector<Date> days = last.Plus(-age).WorkingDays();
        for (int i = 0; i < kPerMonth; ++i) {
            const DemoAssignment& one = random.Of(clinic.assignments);
            const bool two = random.Percent(45);
            const std::size_t day = static_cast<std::size_t>(i) * days.size() / kPerMonth;
            ++key;
            rows.Add({key, one.branch, one.specialist, IsoDate(days[day]), random.Of(patients).id,
                      random.Percent(5) ? 0 : 400000 + key, random.Percent(25) ? kOnSuggestion : 1, random.Of(kDrugs),
                      OrNull(ChoosePathology(random)), random.Between(1, 3),
                      OrNull(two ? random.Of(kDrugs) : std::string_view()), two ? ChoosePathology(random) : 0,
                      two ? random.Between(1, 2) : 0, !random.Percent(8)});
        }
    }
}

}  // namespace vlm::host
