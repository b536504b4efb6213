#include "host/AslHost.h"

#include <filesystem>
#include <memory>
#include <optional>
#include <ostream>

#include "host/DemoClinic.h"
#include "host/DemoClinicImport.h"
#include "host/LoadedLibrary.h"
#include "host/LoggedHelp.h"
#include "host/ReferenceHostUtility.h"
#include "host/services/LockService.h"
#include "host/services/ReferenceHostComponents.h"
#include "host/services/UserRights.h"
#include "platform/Error.h"
#include "platform/data/ado/ConnectionObject.h"
#include "platform/data/sqlite/SqliteConnection.h"
#include "platform/files/spreadsheet/detect/DetectingOpener.h"
#include "platform/system/SettingsStore.h"
#include "platform/text/Number.h"
#include "platform/ui/console/ConsoleToolkit.h"
#include "platform/ui/console/JsonEventLog.h"
#include "platform/ui/console/LoggedProgramStarter.h"
#include "platform/ui/console/TextEventLog.h"

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

data::ConnectionPtr OpenClinic(const HostOptions& options) {
    return data::SqliteConnection::Connect("Provider=SQLite;Data Source=\"" + options.dataFolder +
                                           "\";Initial Catalog=Studio" + text::FormatZeros(options.clinic, 4));
}

/// What an export needs beside the connection is the help, what the import needs is the host's security.
void GiveServices(const com::LateBound& component, const data::ConnectionPtr& connection, const HostOptions& options,
                  const Library::Services& services, ui::EventLog& log) {
    component.PutRef("Connection", com::Make<data::ado::ConnectionObject>(connection).Get());
    if (options.command != kImport) {
        component.PutRef("CHMObject", com::Make<LoggedHelp>(log).Get());
        return;
    }
    component.PutRef("LockSrv", com::Make<LockService>(connection, options.user, services.clock).Get());
    component.PutRef("Rights", com::Make<UserRights>(options.user).Get());
}

/// What the host does with every component: makes it, gives it what it needs, shows its dialog.
void ShowComponent(const HostOptions& options, const Library::Services& services, ui::EventLog& log) {
    const std::optional<GUID> classId = ClassOf(options.command);
    if (!classId) {
        throw UsageError("Componente sconosciuto: " + options.command +
                         ". Si può aprire ASLExport, ASLPanoramico, ExportProgetti o ASLImportPatient.");
    }
    const LoadedLibrary library(services);
    const com::LateBound component = library.Create(*classId);
    GiveServices(component, OpenClinic(options), options, services, log);
    component.Call("ShowDialog");
}

int RunComponent(const HostOptions& options, std::ostream& out, std::ostream& err, bool terminal) {
    const bool json = options.json || (!terminal && !options.text);
    const std::unique_ptr<ui::EventLog> log =
        json ? std::unique_ptr<ui::EventLog>(std::make_unique<ui::JsonEventLog>(out))
             : std::make_unique<ui::TextEventLog>(out);
    ui::ConsoleToolkit toolkit(ui::ConsoleScript(options.words), *log);
    ReferenceHostUtility utility(WorkFolder(options));
    sys::IniSettingsStore settings(options.settingsFile.empty() ? sys::IniSettingsStore::DefaultPath()
                                                                : options.settingsFile);
    ui::LoggedProgramStarter programs(*log);
    sys::FixedInstallFolder installFolder(InstallationFolder(options));
    files::DetectingOpener workbooks;
    sys::SystemClock systemClock;
    sys::FixedClock fixedClock(options.today.value_or(Date{}));
    sys::Clock& clock = options.today ? static_cast<sys::Clock&>(fixedClock) : systemClock;
    ReferenceHostComponents components(clock);
    try {
        ShowComponent(options, {toolkit, utility, settings, clock, programs, installFolder, components, workbooks},
                      *log);
    } catch (const Error&) {
        // A step that cannot be done comes back as the component's failure; the toolkit knows it better.
        if (toolkit.Failure() == nullptr) throw;
    }
    toolkit.ReportUnused(err);
    if (toolkit.Failure() == nullptr) return kDone;
    err << toolkit.Failure()->what() << '\n';
    return kCannotDo;
}

int Init(const HostOptions& options, std::ostream& out) {
    CreateDemo(options.words.front(), options.today.value_or(sys::SystemClock().Today()));
    out << "Creati in " << options.words.front() << ": Aldra, Studio0012 (Sicilia), Studio0016 (Puglia); "
        << kInstallationFolder << " (modelli di importazione), " << kSourcesFolder << " (elenchi da importare).\n";
    return kDone;
}

}  // namespace

int RunHost(const std::vector<std::string>& arguments, std::ostream& out, std::ostream& err, bool terminal) {
    try {
        const HostOptions options = HostOptions::Parse(arguments);
        if (options.help) {
            out << HostOptions::Usage();
            return kDone;
        }
        return options.command == "init" ? Init(options, out) : RunComponent(options, out, err, terminal);
    } catch (const UsageError& error) {
        err << error.what() << "\n\n" << HostOptions::Usage();
        return kCannotDo;
    } catch (const ui::ScriptError& error) {
        err << error.what() << '\n';
        return kCannotDo;
    } catch (const std::exception& error) {
        err << error.what() << '\n';
        return kFailed;
    }
}

}  // namespace vlm::host
