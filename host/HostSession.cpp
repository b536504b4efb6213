#include "HostSession.h"

#include <filesystem>
#include <optional>

#include "ClinicDatabase.h"
#include "LoadedLibrary.h"
#include "LoggedHelp.h"
#include "ado/ConnectionObject.h"
#include "demo/DemoClinicImport.h"
#include "services/LockService.h"
#include "services/UserRights.h"

namespace vlm::host {

namespace fs = std::filesystem;

namespace {

constexpr const char* kImport = "ASLImportPatient";

/// Absolute, because a program that is started on a file may stand in another folder; without a "/" at its end.
std::string FolderText(const fs::path& folder) {
    std::string text = fs::absolute(folder).string();
    while (text.size() > 1 && text.back() == '/') text.pop_back();
    return text;
}

std::string WorkFolder(const HostOptions& options) {
    const fs::path folder =
        options.workFolder.empty() ? fs::temp_directory_path() / "aldra-lavoro" : fs::path(options.workFolder);
    if (options.workFolder.empty()) fs::create_directories(folder);
    return FolderText(folder);
}

/// As given, else the one that goes with the databases; "" for none.
std::string InstallationFolder(const HostOptions& options) {
    if (!options.installFolder.empty()) return FolderText(options.installFolder);
    const fs::path beside = fs::path(options.dataFolder) / kInstallationFolder;
    std::error_code ignored;
    return fs::is_directory(beside, ignored) ? FolderText(beside) : std::string();
}

}  // namespace

HostSession::HostSession(const HostOptions& options, const Face& face)
    : options_(options),
      face_(face),
      utility_(WorkFolder(options)),
      installFolder_(InstallationFolder(options)),
      fixedClock_(options.today.value_or(Date{})),
      components_(Clock()) {}

sys::Clock& HostSession::Clock() { return options_.today ? static_cast<sys::Clock&>(fixedClock_) : systemClock_; }

/// What an export needs beside the connection is the help, what the import needs is the host's security.
void HostSession::GiveServices(const com::LateBound& component, const data::ConnectionPtr& connection) {
    component.PutRef("Connection", com::Make<data::ado::ConnectionObject>(connection).Get());
    if (options_.command != kImport) {
        component.PutRef("CHMObject", com::Make<LoggedHelp>(face_.showHelp).Get());
        return;
    }
    component.PutRef("LockSrv", com::Make<LockService>(connection, options_.user, Clock()).Get());
    component.PutRef("Rights", com::Make<UserRights>(options_.user).Get());
}

void HostSession::Open() {
    const std::optional<GUID> classId = ClassOf(options_.command);
    if (!classId) {
        throw UsageError("Componente sconosciuto: " + options_.command +
                         ". Si può aprire ASLExport, ASLPanoramico, ExportProgetti o ASLImportPatient.");
    }
    const Library::Services services{face_.toolkit,  utility_,       face_.settings, Clock(),
                                     face_.programs, installFolder_, components_,    workbooks_};
    const LoadedLibrary library(services);
    const com::LateBound component = library.Create(*classId);
    GiveServices(component, OpenClinic(options_));
    component.Call("ShowDialog");
}

}  // namespace vlm::host
