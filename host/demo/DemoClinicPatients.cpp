#include "DemoClinicPatients.h"

#include <set>

#include "DemoCatalogues.h"
#include "archive/FiscalCode.h"
#include "values/Number.h"

namespace vlm::host {

namespace {

constexpr std::string_view kSurnames[] = {
    "Russo",     "Messina",  "Lombardo", "Caruso",   "Marino",   "Rizzo",       "Greco",    "Romano",
    "Parisi",    "Amato",    "Puglisi",  "La Rosa",  "Costa",    "Vitale",      "Arena",    "Pappalardo",
    "Bruno",     "Catalano", "Randazzo", "D'Amico",  "D'Angelo", "Dell'Aquila", "De Luca",  "Di Stefano",
    "Lo Presti", "Cantù",    "Mulè",     "Nicolò",   "Patanè",   "Calì",        "Fragalà",  "Macrì",
    "Scalzò",    "Gullà",    "Colonna",  "Losito",   "Cassano",  "Lacitignola", "Quaranta", "Mastropasqua",
    "Ungaro",    "Fo",       "Re",       "Zaccaria", "Schirò"};
constexpr std::string_view kMenNames[] = {"Giuseppe", "Salvatore", "Antonino", "Nicolò",     "Francesco", "Vincenzo",
                                          "Angelo",   "Calogero",  "Rosario",  "Niccolò",    "Vito",      "Cosimo",
                                          "Donato",   "Luca",      "Andrea",   "Gian Maria", "Elia",      "José"};
constexpr std::string_view kWomenNames[] = {"Maria",  "Giuseppa",  "Concetta", "Rosa",     "Agata",      "Lucia",
                                            "Angela", "Carmela",   "Noemì",    "Teresa",   "Annunziata", "Ada",
                                            "Chiara", "Maria Pia", "Eva",      "Loredana", "Zoè",        "Niccolina"};
constexpr std::string_view kStreets[] = {
    "Via Roma",       "Corso Umberto I",     "Via dell'Università", "Piazza Libertà",
    "Via Sant'Agata", "Viale della Regione", "Via Nicolò Garzilli", "Contrada Città Giardino"};

constexpr double kDaysOfYear = 365.25;
constexpr int kYoungest = 800, kOldest = 34000;  // days; born before the first service of the demo

int AgeOf(const DemoPatient& patient, Date today) {
    return static_cast<int>((today.Serial() - patient.birth->Serial()) / kDaysOfYear);
}

int ChooseExemption(int age, DemoClinicRandom& random) {
    if (random.Percent(50)) return kPaysTicket;
    const DemoExemption& one = random.Of(DemoExemptions());
    const bool fits = (one.minAge == 0 && one.maxAge == 0) || (one.minAge != 0 && age <= one.minAge) ||
                      (one.maxAge != 0 && age > one.maxAge);
    return fits ? one.id : kPaysTicket;
}

/// Makes the patients of one clinic, one after the other.
class Maker {
public:
    Maker(const DemoClinicProfile& clinic, const DemoClinicComuni& comuni, Date today, DemoClinicRandom random)
        : clinic_(clinic),
          comuni_(comuni),
          near_(comuni.OfProvinces(clinic.provinces)),
          today_(today),
          random_(random) {}

    DemoPatient Make(int id) {
        DemoPatient patient;
        patient.id = id;
        do Identify(patient);
        while (!codes_.insert(patient.fiscalCode).second);
        Settle(patient);
        Enroll(patient);
        return patient;
    }

private:
    void Identify(DemoPatient& patient) {
        const bool female = random_.Percent(52);
        patient.sex = female ? "F" : "M";
        patient.surname = random_.Of(kSurnames);
        patient.name = female ? random_.Of(kWomenNames) : random_.Of(kMenNames);
        patient.birth = Date(today_.Serial() - random_.Between(kYoungest, kOldest));
        const DemoComune& town = random_.Percent(85) ? *random_.Of(near_) : random_.Of(comuni_.All());
        patient.birthComune = town.id;
        patient.fiscalCode =
            archive::FiscalCode({patient.surname, patient.name, *patient.birth, female, town.landRegistry});
    }

    void Settle(DemoPatient& patient) {
        const DemoTown& town = random_.Of(clinic_.towns);
        patient.homeComune = comuni_.ByIstat(town.istat).id;
        patient.homeCap = town.cap;
        patient.numeroASL = random_.Percent(70) ? clinic_.numeroASL : random_.Of(clinic_.patientASL);
    }

    void Enroll(DemoPatient& patient) {
        patient.healthCard = "80380" + std::string(clinic_.regionCode) + text::FormatZeros(20000000 + patient.id, 8);
        if (random_.Percent(80))
            patient.assistedNumber = std::string(clinic_.numeroASL) + text::FormatZeros(patient.id, 7);
        patient.doctorCode = text::FormatZeros(random_.Between(1, 400) * 113, 6);
        if (clinic_.region == DemoRegion::Puglia && random_.Percent(15)) patient.doctorCode.insert(3, 1, '.');
        patient.choice = Date(today_.Serial() - random_.Between(30, 3000));
        patient.consent = random_.Percent(65) ? kConsentNamed : kConsentAnonymous;
        patient.exemption = ChooseExemption(AgeOf(patient, today_), random_);
        if (random_.Percent(6)) {
            patient.revocationKind = random_.Between(1, 4);
            patient.revoked = Date(today_.Serial() - random_.Between(1, 400));
        }
    }

    const DemoClinicProfile& clinic_;
    const DemoClinicComuni& comuni_;
    std::vector<const DemoComune*> near_;
    Date today_;
    DemoClinicRandom random_;
    std::set<std::string> codes_;
};

std::string IsoOrEmpty(const std::optional<Date>& date) { return date ? IsoDate(*date) : std::string(); }

void FillResidence(DatabaseWriter::Rows& rows, const DemoPatient& patient) {
    if (patient.homeComune == 0) return;
    const std::string street = std::string(kStreets[static_cast<std::size_t>(patient.id) % std::size(kStreets)]) +
                               ", " + text::FormatInteger(patient.id % 180 + 1, false);
    const std::string telephone =
        patient.id % 3 == 0 ? "" : std::string("09").append(text::FormatZeros(patient.id * 7919 % 10000000, 8));
    rows.Add({patient.id, patient.id, 1, patient.homeComune, street, patient.homeCap, OrNull(telephone)});
}

void FillExemption(DatabaseWriter::Rows& rows, const DemoPatient& patient, Date today) {
    if (patient.exemption == kPaysTicket || patient.exemption == 0) return;
    const int year = today.ToCivil().year;
    const Date start = *Date::FromYmd(year - patient.id % 2, 1, 1);
    const std::string end = patient.exemption > 5 ? "" : IsoDate(*Date::FromYmd(year, 12, 31));  // illness does not end
    rows.Add({patient.id, patient.exemption, patient.id, IsoDate(start), OrNull(end)});
}

}  // namespace

std::vector<DemoPatient> MakePatients(const DemoClinicProfile& clinic, const DemoClinicComuni& comuni, int count,
                                      Date today, DemoClinicRandom random) {
    Maker maker(clinic, comuni, today, random);
    std::vector<DemoPatient> patients;
    for (int id = 1; id <= count; ++id) patients.push_back(maker.Make(id));
    return patients;
}

void FillPatients(DatabaseWriter& writer, const DemoClinicProfile& clinic, std::span<const DemoPatient> patients,
                  Date today) {
    DatabaseWriter::Rows rows(
        writer, "Paziente",
        "IDPaziente,CodicePaziente,Cognome,Nome,DataNascita,Sesso,CodiceFiscale,NumTesseraSanitaria,NumAssistito,"
        "DataScelta,NonIscrittoASL,IDComuneNascita,Revocato,DataRevoca,IDTipoRevocaPaziente,NoteRevoca,IDConsenso,"
        "CodRegMedicoFiducia,CodiceRegione,NumeroASL");
    DatabaseWriter::Rows residences(writer, "Residenza",
                                    "IDResidenza,IDPaziente,IDTipoResidenza,IDComune,Indirizzo,Cap,Telefono");
    DatabaseWriter::Rows exemptions(writer, "EsenzionePerPaziente",
                                    "IDEsenzionePerPaziente,IDEsenzione,IDPaziente,DataEsenzione,Scadenza");
    for (const DemoPatient& one : patients) {
        const bool revoked = one.revoked.has_value();
        rows.Add({one.id,
                  std::string("P").append(text::FormatZeros(one.id, 5)),
                  OrNull(one.surname),
                  OrNull(one.name),
                  OrNull(IsoOrEmpty(one.birth)),
                  OrNull(one.sex),
                  OrNull(one.fiscalCode),
                  OrNull(one.healthCard),
                  OrNull(one.assistedNumber),
                  OrNull(IsoOrEmpty(one.choice)),
                  0,
                  one.birthComune,
                  one.id % 5 == 0 && !revoked ? DatabaseWriter::Cell(nullptr) : DatabaseWriter::Cell(revoked),
                  OrNull(IsoOrEmpty(one.revoked)),
                  OrNull(one.revocationKind),
                  OrNull(revoked ? std::string_view("Comunicazione dell'ASL") : std::string_view()),
                  one.consent,
                  OrNull(one.doctorCode),
                  clinic.regionCode,
                  OrNull(one.numeroASL)});
        FillResidence(residences, one);
        FillExemption(exemptions, one, today);
    }
}

}  // namespace vlm::host
