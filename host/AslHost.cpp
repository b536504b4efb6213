#include "host/AslHost.h"

#include <filesystem>
#include <memory>
#include <ostream>

#include "export/ASLExport.h"
#include "frame/Library.h"
#include "host/DemoClinic.h"
#include "host/ReferenceHostUtility.h"
#include "platform/Error.h"
#include "platform/data/sqlite/SqliteConnection.h"
#include "platform/system/SettingsStore.h"
#include "platform/text/Number.h"
#include "platform/ui/console/ConsoleToolkit.h"
#include "platform/ui/console/JsonEventLog.h"
#include "platform/ui/console/LoggedProgramStarter.h"
#include "platform/ui/console/TextEventLog.h"
#include "prescriptions/ASLPanoramico.h"
#include "projects/ExportProgetti.h"
#include "regions/puglia/ASLExportPuglia.h"
#include "regions/sicilia/ASLExportSicilia.h"

namespace vlm::host {

namespace fs = std::filesystem;

namespace {

/// The host's help, told to the log.
class LoggedHelp : public HelpObject {
public:
    explicit LoggedHelp(ui::EventLog& log) : log_(log) {}
    void SetWindow(std::intptr_t) override {}
    void ShowContext(std::int32_t context) override { log_.Help(context); }

private:
    ui::EventLog& log_;
};

/// The regions that this library knows: every one but Puglia exports as Sicily does.
std::unique_ptr<IRegionASLExport> MakeRegion(const Library& library, std::int32_t idRegioneTariffario) {
    if (idRegioneTariffario == kRegionePuglia) return std::make_unique<ASLExportPuglia>(library);
    return std::make_unique<ASLExportSicilia>(library);
}

std::string WorkFolder(const HostOptions& options) {
    const fs::path folder =
        options.workFolder.empty() ? fs::temp_directory_path() / "aldra-lavoro" : fs::path(options.workFolder);
    if (options.workFolder.empty()) fs::create_directories(folder);
    std::string text = folder.string();
    while (text.size() > 1 && text.back() == '/') text.pop_back();
    return text;
}

data::ConnectionPtr OpenClinic(const HostOptions& options) {
    return data::SqliteConnection::Connect("Provider=SQLite;Data Source=\"" + options.dataFolder +
                                        "\";Initial Catalog=Studio" + text::FormatZeros(options.clinic, 4));
}

/// What the host does with every export component.
template <class Component>
void Show(Component&& component, const HostOptions& options, ui::EventLog& log) {
    component.SetConnection(OpenClinic(options));
    component.SetCHMObject(std::make_shared<LoggedHelp>(log));
    component.ShowDialog();
}

void ShowComponent(const HostOptions& options, Library& library, ui::EventLog& log) {
    const auto regions = [&library](std::int32_t region) { return MakeRegion(library, region); };
    if (options.command == "ASLExport") {
        Show(ASLExport(library, regions), options, log);
    } else if (options.command == "ASLPanoramico") {
        Show(ASLPanoramico(library), options, log);
    } else if (options.command == "ExportProgetti") {
        Show(ExportProgetti(library), options, log);
    } else {
        throw UsageError("Componente sconosciuto: " + options.command +
                         ". Si può aprire ASLExport, ASLPanoramico o ExportProgetti.");
    }
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
    sys::SystemClock systemClock;
    sys::FixedClock fixedClock(options.today.value_or(Date{}));
    sys::Clock& clock = options.today ? static_cast<sys::Clock&>(fixedClock) : systemClock;
    Library library({toolkit, utility, settings, clock, programs});
    ShowComponent(options, library, *log);
    toolkit.ReportUnused(err);
    if (toolkit.Failure() == nullptr) return kDone;
    err << toolkit.Failure()->what() << '\n';
    return kCannotDo;
}

int Init(const HostOptions& options, std::ostream& out) {
    CreateDemo(options.words.front(), options.today.value_or(sys::SystemClock().Today()));
    out << "Creati in " << options.words.front() << ": Aldra, Studio0012 (Sicilia), Studio0016 (Puglia).\n";
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
