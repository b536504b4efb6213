#include "demo/DemoClinic.h"

#include <algorithm>
#include <optional>
#include <span>
#include <vector>

#include "DemoCatalogues.h"
#include "DemoClinicFaults.h"
#include "DemoClinicImport.h"
#include "DemoClinicTreatments.h"
#include "DemoPlaces.h"
#include "archive/FiscalCode.h"
#include "databases/SqliteWriter.h"
#include "databases/TSqlWriter.h"
#include "values/Error.h"

namespace vlm::host {

namespace fs = std::filesystem;

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
        doctors.Add({id, like.surname, like.name,
                     archive::FiscalCode({like.surname, like.name, birth, like.sex == "F", "G273"})});
    }
}

/// What stands in the databases of the demo and beside them, wherever they are kept.
class DemoClinicContents {
public:
    /// `today` without its time. Throws Error naming the list of comuni that cannot be read.
    DemoClinicContents(Date today, const DemoOptions& options);

    /// Makes the whole database in one transaction: tables, rows, indices.
    void WriteMaster(DatabaseWriter& writer) const;
    void WriteClinic(DatabaseWriter& writer, const DemoClinicProfile& clinic) const;
    /// The lists are those of the first clinic: of its patients, and of others who chose its doctors.
    void WriteFiles(const std::filesystem::path& folder) const;

private:
    /// Each part of the data draws from a stream of its own.
    DemoClinicRandom Random(const DemoClinicProfile& clinic, std::uint64_t stream) const;
    void FillDocuments(DatabaseWriter& writer, const DemoClinicProfile& clinic, std::span<const DemoPatient> sound,
                       std::span<const DemoPatient> spoilt) const;
    bool Ordinary() const { return options_.serviceRows <= 0; }

    DemoOptions options_;
    Date today_;
    DemoClinicComuni comuni_;
};

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

constexpr const char* kMaster = "Aldra";

Date DayOf(Date moment) {
    const Date::Civil day = moment.ToCivil();
    return *Date::FromYmd(day.year, day.month, day.day);
}

std::vector<std::string> Databases() {
    std::vector<std::string> names = {kMaster};
    for (const DemoClinicProfile& clinic : DemoProfiles()) names.push_back(clinic.DatabaseName());
    return names;
}

std::string FileOf(const std::string& database) { return database + ".sqlite"; }

void CreateFiles(const fs::path& folder, Date today, const DemoOptions& options) {
    std::vector<std::string> files = {kInstallationFolder, kSourcesFolder};
    for (const std::string& database : Databases()) files.push_back(FileOf(database));
    DemoClinicFolder place(folder, std::move(files));
    const DemoClinicContents contents(today, options);
    {
        SqliteWriter writer(place.Workshop() / FileOf(kMaster));
        contents.WriteMaster(writer);
    }
    for (const DemoClinicProfile& clinic : DemoProfiles()) {
        SqliteWriter writer(place.Workshop() / FileOf(clinic.DatabaseName()));
        contents.WriteClinic(writer, clinic);
    }
    contents.WriteFiles(place.Workshop());
    place.Deliver();
}

void FillServer(const DemoClinicServer& server, const DemoClinicContents& contents, const DatabaseMade& made) {
    {
        TSqlWriter writer(server.Open(kMaster), MasterSchema());
        contents.WriteMaster(writer);
        made(kMaster, writer.RowCount());
    }
    for (const DemoClinicProfile& clinic : DemoProfiles()) {
        TSqlWriter writer(server.Open(clinic.DatabaseName()), ClinicSchema());
        contents.WriteClinic(writer, clinic);
        made(clinic.DatabaseName(), writer.RowCount());
    }
}

void CreateOnServer(const OpenDatabase& open, const fs::path& folder, Date today, const DatabaseMade& made,
                    const DemoOptions& options) {
    std::optional<DemoClinicFolder> place;
    if (!folder.empty()) place.emplace(folder, std::vector<std::string>{kInstallationFolder, kSourcesFolder});
    DemoClinicServer server(open, Databases());
    const DemoClinicContents contents(today, options);
    if (place) contents.WriteFiles(place->Workshop());
    server.Create([&] {
        FillServer(server, contents, made);
        if (place) place->Deliver();
    });
}

/// What the file system says is told with the folder's name.
void InFolder(const fs::path& folder, const std::function<void()>& work) {
    try {
        work();
    } catch (const fs::filesystem_error& error) {
        throw Error("Impossibile creare la clinica dimostrativa in \"" + folder.string() +
                    "\": " + error.code().message() + ".");
    }
}

}  // namespace

void CreateDemo(const fs::path& folder, Date today, const DemoOptions& options) {
    InFolder(folder, [&] { CreateFiles(folder, DayOf(today), options); });
}

void CreateDemoOnServer(const OpenDatabase& open, const fs::path& folder, Date today, const DatabaseMade& made,
                        const DemoOptions& options) {
    InFolder(folder, [&] { CreateOnServer(open, folder, DayOf(today), made, options); });
}

}  // namespace vlm::host
