#include "DemoClinicStaff.h"

#include "DemoClinicExemptions.h"

namespace vlm::host {

namespace {

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
