#include "DemoClinicContents.h"

#include <algorithm>

#include "DemoClinicFaults.h"
#include "DemoClinicMaster.h"
#include "DemoClinicPrescriptions.h"
#include "DemoClinicProjects.h"
#include "DemoClinicServices.h"
#include "DemoClinicStaff.h"
#include "databases/ClinicSchema.h"
#include "databases/MasterSchema.h"
#include "demo/DemoClinicImport.h"
#include "services/FiscalCode.h"

namespace vlm::host {

namespace {

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

}  // namespace

DemoClinicContents::DemoClinicContents(Date today, const DemoOptions& options)
    : options_(options), today_(today), comuni_(options.comuniCsv) {}

DemoClinicRandom DemoClinicContents::Random(const DemoClinicProfile& clinic, std::uint64_t stream) const {
    return DemoClinicRandom(options_.seed, static_cast<std::uint64_t>(clinic.idStudio) * kStreams + stream);
}

void DemoClinicContents::WriteMaster(DatabaseWriter& writer) const {
    writer.CreateTables(MasterSchema());
    FillMaster(writer, comuni_);
    writer.CreateIndices(MasterSchema());
    writer.Commit();
}

void DemoClinicContents::WriteClinic(DatabaseWriter& writer, const DemoClinicProfile& clinic) const {
    const DemoMonth last = DemoMonth::Before(today_);
    std::vector<DemoPatient> patients =
        MakePatients(clinic, comuni_, PatientCount(options_), today_, Random(clinic, kPatientStream));
    const std::span<DemoPatient> all(patients);
    const std::span<DemoPatient> sound = all.first(all.size() - kFaultyPatients), kept = all.last(kFaultyPatients);
    if (Ordinary()) DemoClinicFaults::SpoilPatients(clinic, kept);

    writer.CreateTables(ClinicSchema());
    FillStaff(writer, clinic);
    FillDoctors(writer, sound);
    FillPatients(writer, clinic, patients, today_);
    FillPrescriptions(writer, clinic, sound, last, Random(clinic, kPrescriptionStream));
    FillProjects(writer, clinic, comuni_, sound, last, Random(clinic, kProjectStream));
    FillDocuments(writer, clinic, sound, kept);
    writer.CreateIndices(ClinicSchema());
    writer.Commit();
}

void DemoClinicContents::FillDocuments(DatabaseWriter& writer, const DemoClinicProfile& clinic,
                                       std::span<const DemoPatient> sound, std::span<const DemoPatient> spoilt) const {
    const DemoMonth last = DemoMonth::Before(today_);
    DemoClinicDocuments documents(writer, clinic);
    DemoClinicServices services(clinic, sound, Random(clinic, kServiceStream));
    services.Fill(documents, last, {Ordinary() ? kDemoServices : options_.serviceRows, !Ordinary()});
    if (Ordinary()) DemoClinicFaults(clinic, services, documents).Fill(last, sound, spoilt);
}

void DemoClinicContents::WriteFiles(const std::filesystem::path& folder) const {
    const DemoClinicProfile& clinic = DemoProfiles().front();
    const auto patients = [&](Stream stream, int count) {
        return MakePatients(clinic, comuni_, count, today_, Random(clinic, stream));
    };
    WriteImportFiles(folder, comuni_, patients(kPatientStream, kDemoPatients - kFaultyPatients),
                     patients(kNewcomerStream, kDemoNewcomers), today_);
}

}  // namespace vlm::host
