#include "DemoClinicMaster.h"

#include <map>

#include "DemoClinicExemptions.h"
#include "demo/DemoClinicProfile.h"

namespace vlm::host {

namespace {

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

}  // namespace

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

}  // namespace vlm::host
