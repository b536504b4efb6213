#include "host/AslHost.h"

#include <ostream>

#include "HostSession.h"
#include "demo/DemoClinic.h"
#include "frmStart.h"
#include "server/VlmHost.h"
#include "values/Error.h"
#include "values/Number.h"

namespace vlm::host {

namespace {

Date Today(const HostOptions& options) { return options.today.value_or(sys::SystemClock().Today()); }

int PlayOnConsole(const HostOptions& options, std::ostream& out, std::ostream& err, bool terminal) {
    const bool json = options.json || (!terminal && !options.text);
    std::string failed, unused;
    const auto tell = [&](std::int32_t kind, const std::string& text) {
        if (kind == VLM_TELL_EVENT) {
            out << text << std::flush;
        } else {
            (kind == VLM_TELL_FAILED ? failed : unused) = text;
        }
    };
    try {
        HostSession(options, {"console", !json, tell, nullptr, [](std::int32_t) {}}).Open();
    } catch (const Error&) {
        // A step that cannot be done comes back as the component's failure; the library tells it better.
        if (failed.empty()) throw;
    }
    err << unused;
    if (failed.empty()) return kDone;
    err << failed << '\n';
    return kCannotDo;
}

/// Asked for, or what fits: somebody sits at a screen and does the steps by hand.
bool UsesWindows(const HostOptions& options, bool terminal, const Desktop* desktop) {
    if (!options.ui.empty()) return options.ui == "qt";
    const bool byHand = terminal && options.words.empty() && !options.json && !options.text;
    return byHand && desktop != nullptr && desktop->Hindrance().empty();
}

/// Stands for the help file of a whole application.
void ShowHelpIn(ui::Toolkit& toolkit, std::int32_t context) {
    toolkit.Show({"Qui si apre la guida all'argomento " + std::to_string(context) + ".", "Guida", ui::Icon::Information,
                  ui::Buttons::Ok});
}

int ShowInWindows(const HostOptions& options, Desktop* desktop) {
    if (desktop == nullptr) throw UsageError("Questa versione non ha finestre: usare --ui console.");
    if (!options.words.empty()) throw UsageError("I passi si eseguono con --ui console.");
    if (const std::string hindrance = desktop->Hindrance(); !hindrance.empty()) throw Error(hindrance);
    sys::IniSettingsStore settings(options.settingsFile.empty() ? sys::IniSettingsStore::DefaultPath()
                                                                : options.settingsFile);
    desktop->Open(settings);
    ui::Toolkit& toolkit = desktop->Toolkit();
    const auto open = [&](const HostOptions& chosen) {
        HostSession(chosen, {desktop->ToolkitName(),
                             false,
                             {},
                             &desktop->Programs(),
                             [&toolkit](std::int32_t context) { ShowHelpIn(toolkit, context); }})
            .Open();
    };
    if (options.command.empty()) {
        frmStart start(toolkit, options, Today(options), open);
        toolkit.ShowModal(start);
    } else {
        open(options);
    }
    return kDone;
}

/// One line for each database, because a server takes its time.
int InitServer(const HostOptions& options, std::ostream& out) {
    const std::string folder = options.words.empty() ? std::string() : options.words.front();
    const auto open = [&](const std::string& database) { return OpenOdbc(options.odbcText, database); };
    const auto made = [&](const std::string& database, std::int64_t rows) {
        out << database << ": " << text::FormatInteger(rows, true) << " righe." << std::endl;
    };
    CreateDemoOnServer(open, folder, Today(options), made);
    out << "Creati sul server: Aldra, Studio0012 (Sicilia), Studio0016 (Puglia)";
    if (!folder.empty()) {
        out << "; in " << folder << ": " << kInstallationFolder << " (modelli di importazione), " << kSourcesFolder
            << " (elenchi da importare)";
    }
    out << ".\n";
    return kDone;
}

int Init(const HostOptions& options, std::ostream& out) {
    if (!options.odbcText.empty()) return InitServer(options, out);
    CreateDemo(options.words.front(), Today(options));
    out << "Creati in " << options.words.front() << ": Aldra, Studio0012 (Sicilia), Studio0016 (Puglia); "
        << kInstallationFolder << " (modelli di importazione), " << kSourcesFolder << " (elenchi da importare).\n";
    return kDone;
}

int RunWith(const HostOptions& options, std::ostream& out, std::ostream& err, bool terminal, Desktop* desktop) {
    if (options.help) {
        out << HostOptions::Usage();
        return kDone;
    }
    if (options.command == "init") return Init(options, out);
    if (UsesWindows(options, terminal, desktop)) return ShowInWindows(options, desktop);
    if (options.command.empty()) throw UsageError("Manca il componente da aprire.");
    return PlayOnConsole(options, out, err, terminal);
}

}  // namespace

int RunHost(const std::vector<std::string>& arguments, std::ostream& out, std::ostream& err, bool terminal,
            Desktop* desktop) {
    try {
        return RunWith(HostOptions::Parse(arguments), out, err, terminal, desktop);
    } catch (const UsageError& error) {
        err << error.what() << "\n\n" << HostOptions::Usage();
        return kCannotDo;
    } catch (const std::exception& error) {
        err << error.what() << '\n';
        return kFailed;
    }
}

}  // namespace vlm::host
