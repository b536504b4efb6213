#include "demo/DemoClinic.h"

#include <optional>
#include <string>
#include <vector>

#include "DemoClinicContents.h"
#include "DemoClinicFolder.h"
#include "DemoClinicServer.h"
#include "databases/ClinicSchema.h"
#include "databases/MasterSchema.h"
#include "databases/SqliteWriter.h"
#include "databases/TSqlWriter.h"
#include "demo/DemoClinicImport.h"
#include "values/Error.h"

namespace vlm::host {

namespace fs = std::filesystem;

namespace {

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
