#include "DemoClinicTreatments.h"

#include "DemoCatalogues.h"
#include "values/Number.h"

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

constexpr int kPerQuarter = 10;
constexpr int kQuarters = kDemoMonths / 3;
constexpr int kClosed = 4;
constexpr int kProvided = 1, kSuspended = 2, kProvidedAtHome = 10;  // states of the accesses
constexpr std::string_view kTreatedPathologies[] = {"43890", "71590", "3420", "72610", "8200"};
constexpr int kForeignCitizenships[] = {276, 20, 201};

class Filler {
public:
    Filler(DatabaseWriter& writer, const DemoClinicProfile& clinic, const DemoClinicComuni& comuni,
           DemoClinicRandom random)
        : clinic_(clinic),
          comuni_(comuni),
          random_(random),
          projects_(writer, "Progetto",
                    "IDProgetto,IDPaziente,IDSpecialista,Anno,Periodo,Protocollo,CodiceISTAT,CodiceIstatCittadinanza,"
                    "ProvenienzaPaziente,Trattamento,CodicePatologia,NumeroAutorizzazione,DataAutorizzazione,"
                    "NumPrestAutor,DataInizio,DataRevoca,TipoDimissione,IDStatoProgetto"),
          states_(writer, "StatoProgetto", "IDProgetto,IDStatoPrestazioneErogata,NumeroAccessi,ImportoTotale") {}

    void Add(const DemoPatient& patient, DemoMonth firstOfQuarter) {
        ++key_;
        const Date granted(firstOfQuarter.First().Serial() + random_.Between(0, 60));
        const bool closed = random_.Percent(35);
        const bool revoked = closed && random_.Percent(50);
        const int state = random_.Percent(10) ? 0 : random_.Between(1, kClosed - 1);
        projects_.Add({key_, patient.id, clinic_.SpecialistOf(kFaultyBranch, key_), firstOfQuarter.year,
                       (firstOfQuarter.month - 1) / 3 + 1, 1000 + key_,
                       comuni_.All()[static_cast<std::size_t>(patient.homeComune - 1)].istat,
                       OrNull(random_.Percent(8) ? random_.Of(kForeignCitizenships) : 0), random_.Between(1, 4),
                       random_.Between(1, 5), random_.Of(kTreatedPathologies), text::FormatZeros(50000 + key_, 6),
                       IsoDate(granted), random_.Between(2, 6) * 10, IsoDate(Date(granted.Serial() + 3)),
                       revoked ? OrNull(IsoDate(Date(granted.Serial() + 45))) : OrNull(0),
                       OrNull(revoked ? random_.Between(1, 3) : 0), OrNull(closed ? kClosed : state)});
        AddStates();
    }

private:
    void AddStates() {
        AddState(kProvided, random_.Between(4, 30));
        if (random_.Percent(15)) AddState(kSuspended, random_.Between(0, 2));
        if (random_.Percent(40)) AddState(kProvidedAtHome, random_.Between(1, 12));
    }
    void AddState(int state, int accesses) {
        const Currency each = Currency::FromInteger(state == kProvidedAtHome ? 45 : 38);
        states_.Add({key_, state, accesses, Currency::FromUnits(each.Units() * accesses)});
    }

    const DemoClinicProfile& clinic_;
    const DemoClinicComuni& comuni_;
    DemoClinicRandom random_;
    DatabaseWriter::Rows projects_, states_;
    int key_ = 0;
};

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

void FillProjects(DatabaseWriter& writer, const DemoClinicProfile& clinic, const DemoClinicComuni& comuni,
                  std::span<const DemoPatient> patients, DemoMonth last, DemoClinicRandom random) {
    Filler filler(writer, clinic, comuni, random);
    const DemoMonth lastQuarter = last.Plus(-((last.month - 1) % 3));
    for (int back = kQuarters - 1; back >= 0; --back)
        for (int i = 0; i < kPerQuarter; ++i) filler.Add(random.Of(patients), lastQuarter.Plus(-3 * back));
}

}  // namespace vlm::host
