#include "DemoCatalogues.h"

#include <map>

namespace vlm::host {

namespace {

constexpr DemoExemptionType kTypes[] = {
    {1, "Esenzione per reddito", 1}, {2, "Non esente", 2}, {3, "Esenzione per patologia", 3}, {4, "Invalidità", 1}};

constexpr DemoExemption kExemptions[] = {
    {1, "E01", 1, 6, 65, 1}, {2, "E02", 1, 0, 0, 1},     {3, "E03", 1, 0, 0, 1},       {4, "E04", 1, 0, 60, 1},
    {5, "E05", 1, 0, 0, 1},  {6, "013.250", 3, 0, 0, 2}, {7, "0A31", 3, 0, 0, 2},      {8, "048", 3, 0, 0, 2},
    {9, "C01", 4, 0, 0, 3},  {10, "G01", 4, 0, 0, 5},    {kPaysTicket, "", 2, 0, 0, 0}};

constexpr std::string_view kMonths[] = {"gennaio", "febbraio", "marzo",     "aprile",  "maggio",   "giugno",
                                        "luglio",  "agosto",   "settembre", "ottobre", "novembre", "dicembre"};
constexpr std::string_view kRevocations[] = {"Decesso", "Trasferimento", "Scelta di altro medico", "Revoca d'ufficio"};

struct Pathology {
    std::string_view code, name;
};
constexpr Pathology kPathologies[] = {{"25000", "Diabete mellito"},
                                      {"4019", "Ipertensione essenziale"},
                                      {"42731", "Fibrillazione atriale"},
                                      {"4280", "Scompenso cardiaco"},
                                      {"71590", "Artrosi"},
                                      {"2720", "Ipercolesterolemia"},
                                      {"36511", "Glaucoma"},
                                      {"49390", "Asma"},
                                      {"53081", "Reflusso gastroesofageo"},
                                      {"7245.00", "Mal di schiena"}};

/// A clinic that works alone: it has no team, hence no projects and no database of its own here.
constexpr int kLonelyClinic = 20;

void FillClinics(DatabaseWriter& writer) {
    DatabaseWriter::Rows clinics(writer, "Studi",
                                 "IDStudio,IDASL,IDDistrettoASL,IDRegioneTariffario,RagioneSociale,Nome,IDEquipe");
    DatabaseWriter::Rows authorities(writer, "ASL", "IDASL,NumeroASL");
    DatabaseWriter::Rows districts(writer, "DistrettoASL", "IDDistrettoASL,Codice");
    int key = 0;
    for (const DemoClinicProfile& clinic : DemoProfiles()) {
        ++key;
        authorities.Add({key, clinic.numeroASL});
        districts.Add({key, clinic.districtCode});
        clinics.Add({clinic.idStudio, key, key, clinic.idRegioneTariffario, clinic.company, clinic.name, key});
    }
    clinics.Add(
        {kLonelyClinic, 1, 1, DemoProfiles()[0].idRegioneTariffario, "Studio medico", "Dr. Nicolò Bonfà", nullptr});
}

void FillComuni(DatabaseWriter& writer, const DemoClinicComuni& comuni) {
    std::map<std::string_view, std::string_view> caps;
    for (const DemoClinicProfile& clinic : DemoProfiles())
        for (const DemoTown& town : clinic.towns) caps[town.istat] = town.cap;
    DatabaseWriter::Rows rows(writer, "Comune", "IDComune,Comune,CodiceISTAT,CodiceCatastale,Sigla,Cap");
    for (const DemoComune& comune : comuni.All()) {
        const auto cap = caps.find(comune.istat);
        rows.Add({comune.id, comune.name, comune.istat, comune.landRegistry, comune.sigla,
                  OrNull(cap == caps.end() ? std::string_view() : cap->second)});
    }
}

void FillExemptions(DatabaseWriter& writer) {
    DatabaseWriter::Rows types(writer, "TipoEsenzione", "IDTipoEsenzione,TipoEsenzione,IDPosizioneTicket");
    for (const DemoExemptionType& type : DemoExemptionTypes()) types.Add({type.id, type.name, type.ticketPosition});
    DatabaseWriter::Rows exemptions(writer, "Esenzione", "IDEsenzione,IDTipoEsenzione");
    for (const DemoExemption& exemption : DemoExemptions()) exemptions.Add({exemption.id, exemption.type});
}

template <typename Texts>
void FillTexts(DatabaseWriter& writer, std::string_view table, std::string_view columns, const Texts& texts) {
    DatabaseWriter::Rows rows(writer, table, columns);
    int key = 0;
    for (std::string_view text : texts) rows.Add({++key, text});
}

/// "segreto1" as the parameter store keeps passwords: a mark (code 1), then each character with its highest bit
/// turned and its place (from 1) taken off.
constexpr std::string_view kScrambledPassword = "\x01òãäîàîè©";

/// Entries 3 and 4 are of the kinds whose rows take keys of their own range.
constexpr int kMenuTypes[] = {1, 2, 7, 10, 3, 0};

void FillParameters(DatabaseWriter& writer, const DemoClinicProfile& clinic) {
    DatabaseWriter::Rows parameters(writer, "ParametroSpecialista", "IDSpecialista,Nome,Valore");
    for (const DemoSpecialist& one : clinic.specialists) {
        parameters.Add({one.id, "INPSUtente", "utente" + std::string(one.regionalCode)});
        parameters.Add({one.id, "INPSPassword", kScrambledPassword});
    }
}

void FillCatalogues(DatabaseWriter& writer) {
    DatabaseWriter::Rows menu(writer, "MenuItem", "IDMenuItem,IDTipoMenuItem");
    int key = 0;
    for (int type : kMenuTypes) menu.Add({++key, type});
    DatabaseWriter::Rows shares(writer, "vwPartecipazioneSpesa",
                                "IDEsenzione,CodiceIdentificativo,EtaMinEsenzione,EtaMaxEsenzione,"
                                "IDCategoriaDiAppartenenza");
    for (const DemoExemption& one : DemoExemptions())
        shares.Add({one.id, OrNull(one.code), one.minAge, one.maxAge, one.category});
}

}  // namespace

std::span<const DemoExemptionType> DemoExemptionTypes() { return kTypes; }
std::span<const DemoExemption> DemoExemptions() { return kExemptions; }

void FillMaster(DatabaseWriter& writer, const DemoClinicComuni& comuni) {
    FillClinics(writer);
    FillTexts(writer, "Mese", "IDMese,Mese", kMonths);
    FillTexts(writer, "TipoRevocaPaziente", "IDTipoRevocaPaziente,TipoRevocaPaziente", kRevocations);
    FillComuni(writer, comuni);
    FillExemptions(writer);
    DatabaseWriter::Rows pathologies(writer, "Patologia", "IDPatologia,CodificaCompleta,Patologia");
    int key = 0;
    for (const Pathology& pathology : kPathologies) pathologies.Add({++key, pathology.code, pathology.name});
}

int DemoPathologyCount() { return static_cast<int>(std::size(kPathologies)); }

void FillStaff(DatabaseWriter& writer, const DemoClinicProfile& clinic) {
    DatabaseWriter::Rows branches(writer, "BrancaPerStudio", "IDBrancaPerStudio,BrancaPerStudio");
    for (const DemoBranch& branch : DemoBranches()) branches.Add({branch.id, branch.name});
    DatabaseWriter::Rows specialists(writer, "Specialista", "IDSpecialista,Cognome,Nome,CodiceRegionale");
    for (const DemoSpecialist& one : clinic.specialists)
        specialists.Add({one.id, one.surname, one.name, one.regionalCode});
    DatabaseWriter::Rows assignments(writer, "BrancaPerStudioPerSpecialista", "IDBrancaPerStudio,IDSpecialista");
    for (const DemoAssignment& one : clinic.assignments) assignments.Add({one.branch, one.specialist});
    DatabaseWriter::Rows identity(writer, "vwstudi", "CodiceRegioneTariffario,NumeroASL");
    identity.Add({clinic.regionCode, clinic.numeroASL});
    FillParameters(writer, clinic);
    FillCatalogues(writer);
}

}  // namespace vlm::host
