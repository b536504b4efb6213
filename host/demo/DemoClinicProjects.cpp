#include "DemoClinicProjects.h"

#include "values/Number.h"

namespace vlm::host {

namespace {

constexpr int kPerQuarter = 10;
constexpr int kQuarters = kDemoMonths / 3;
constexpr int kClosed = 4;
constexpr int kProvided = 1, kSuspended = 2, kProvidedAtHome = 10;  // states of the accesses
constexpr std::string_view kPathologies[] = {"43890", "71590", "3420", "72610", "8200"};
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
                       random_.Between(1, 5), random_.Of(kPathologies), text::FormatZeros(50000 + key_, 6),
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

void FillProjects(DatabaseWriter& writer, const DemoClinicProfile& clinic, const DemoClinicComuni& comuni,
                  std::span<const DemoPatient> patients, DemoMonth last, DemoClinicRandom random) {
    Filler filler(writer, clinic, comuni, random);
    const DemoMonth lastQuarter = last.Plus(-((last.month - 1) % 3));
    for (int back = kQuarters - 1; back >= 0; --back)
        for (int i = 0; i < kPerQuarter; ++i) filler.Add(random.Of(patients), lastQuarter.Plus(-3 * back));
}

}  // namespace vlm::host
