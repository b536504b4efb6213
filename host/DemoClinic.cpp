#include "host/DemoClinic.h"

#include <algorithm>
#include <span>
#include <string>
#include <vector>

#include "host/DatabaseSchema.h"
#include "host/DatabaseWriter.h"
#include "host/DemoClinicComuni.h"
#include "host/DemoClinicFaults.h"
#include "host/DemoClinicFolder.h"
#include "host/DemoClinicImport.h"
#include "host/DemoClinicMaster.h"
#include "host/DemoClinicPatients.h"
#include "host/DemoClinicPrescriptions.h"
#include "host/DemoClinicProfile.h"
#include "host/DemoClinicProjects.h"
#include "host/DemoClinicServices.h"
#include "host/DemoClinicStaff.h"
#include "host/FiscalCode.h"
#include "platform/Error.h"

namespace vlm::host {

namespace fs = std::filesystem;

namespace {

constexpr const char* kMasterFile = "Aldra.sqlite";
constexpr std::int64_t kDemoServices = 12000;
constexpr int kDemoPatients = 300;
constexpr int kDemoNewcomers = 20;
constexpr std::int64_t kServicesOfPatient = 160;  // when measuring: a million services have thousands of patients

/// The parts of the data that draw from a sequence of their own.
enum Stream : std::uint64_t {
    kNewcomerStream,
    kPatientStream,
    kServiceStream,
    kPrescriptionStream,
    kProjectStream,
    kStreams
};

int PatientCount(const DemoOptions& options) {
    return std::max(kDemoPatients, static_cast<int>(options.serviceRows / kServicesOfPatient));
}

void FillDoctors(DatabaseWriter& writer, std::span<const DemoPatient> namesakes) {
    DatabaseWriter::Rows doctors(writer, "Medico", "IDMedico,Cognome,Nome,CodiceFiscale");
    for (int id = 1; id <= kDoctors; ++id) {
        const DemoPatient& like = namesakes[static_cast<std::size_t>(id)];
        const Date birth = *Date::FromYmd(1950 + id % 30, id % 12 + 1, id % 28 + 1);
        doctors.Add(
            {id, like.surname, like.name, FiscalCode({like.surname, like.name, birth, like.sex == "F", "G273"})});
    }
}

void CreateMaster(const fs::path& file, const DemoClinicComuni& comuni) {
    DatabaseWriter writer(file);
    writer.Execute(MasterSchema());
    FillMaster(writer, comuni);
    writer.Commit();
}

void CreateClinic(const fs::path& file, const DemoClinicProfile& clinic, const DemoClinicComuni& comuni, Date today,
                  const DemoOptions& options) {
    const bool ordinary = options.serviceRows <= 0;
    const auto random = [&](Stream stream) {
        return DemoClinicRandom(options.seed, static_cast<std::uint64_t>(clinic.idStudio) * kStreams + stream);
    };
    const DemoMonth last = DemoMonth::Before(today);
    std::vector<DemoPatient> patients =
        MakePatients(clinic, comuni, PatientCount(options), today, random(kPatientStream));
    const std::span<DemoPatient> all(patients);
    const std::span<DemoPatient> sound = all.first(all.size() - kFaultyPatients), kept = all.last(kFaultyPatients);
    if (ordinary) DemoClinicFaults::SpoilPatients(clinic, kept);

    DatabaseWriter writer(file);
    writer.Execute(ClinicSchema());
    FillStaff(writer, clinic);
    FillDoctors(writer, sound);
    FillPatients(writer, clinic, patients, today);
    FillPrescriptions(writer, clinic, sound, last, random(kPrescriptionStream));
    FillProjects(writer, clinic, comuni, sound, last, random(kProjectStream));
    {
        DemoClinicDocuments documents(writer, clinic);
        DemoClinicServices services(clinic, sound, random(kServiceStream));
        services.Fill(documents, last, {ordinary ? kDemoServices : options.serviceRows, !ordinary});
        if (ordinary) DemoClinicFaults(clinic, services, documents).Fill(last, sound, kept);
    }
    writer.Execute(ClinicIndices());
    writer.Commit();
}

/// The lists are those of the first clinic: of its patients, and of others who chose its doctors.
void CreateImportFiles(const fs::path& folder, const DemoClinicComuni& comuni, Date today, const DemoOptions& options) {
    const DemoClinicProfile& clinic = DemoProfiles().front();
    const auto patients = [&](Stream stream, int count) {
        const std::uint64_t number = static_cast<std::uint64_t>(clinic.idStudio) * kStreams + stream;
        return MakePatients(clinic, comuni, count, today, DemoClinicRandom(options.seed, number));
    };
    WriteImportFiles(folder, comuni, patients(kPatientStream, kDemoPatients - kFaultyPatients),
                     patients(kNewcomerStream, kDemoNewcomers), today);
}

std::string FileOf(const DemoClinicProfile& clinic) { return clinic.DatabaseName() + ".sqlite"; }

void Create(const fs::path& folder, Date today, const DemoOptions& options) {
    std::vector<std::string> files = {kMasterFile, kInstallationFolder, kSourcesFolder};
    for (const DemoClinicProfile& clinic : DemoProfiles()) files.push_back(FileOf(clinic));
    DemoClinicFolder place(folder, std::move(files));
    const DemoClinicComuni comuni(options.comuniCsv);
    CreateMaster(place.Workshop() / kMasterFile, comuni);
    for (const DemoClinicProfile& clinic : DemoProfiles())
        CreateClinic(place.Workshop() / FileOf(clinic), clinic, comuni, today, options);
    CreateImportFiles(place.Workshop(), comuni, today, options);
    place.Deliver();
}

}  // namespace

void CreateDemo(const fs::path& folder, Date today, const DemoOptions& options) {
    try {
        const Date::Civil day = today.ToCivil();  // without its time
        Create(folder, *Date::FromYmd(day.year, day.month, day.day), options);
    } catch (const fs::filesystem_error& error) {
        throw Error("Impossibile creare i database in \"" + folder.string() + "\": " + error.code().message() + ".");
    }
}

}  // namespace vlm::host
