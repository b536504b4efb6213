#include "host/HostOptions.h"

#include "platform/text/Number.h"
#include "platform/text/Utf8.h"

namespace vlm::host {

namespace {

int ClinicNumber(const std::string& text) {
    const std::optional<double> number = text::ParseNumber(text);
    if (!number || *number < 1 || *number > 9999) throw UsageError("--clinic vuole un numero da 1 a 9999.");
    return static_cast<int>(*number);
}

Date Day(const std::string& text) {
    const std::optional<Date> date = ParseIsoDate(text);
    if (!date) throw UsageError("--today vuole una data AAAA-MM-GG.");
    return *date;
}

std::string User(const std::string& text) {
    if (text.empty()) throw UsageError("--user vuole un nome.");
    return text;
}

std::string Ui(const std::string& text) {
    if (text != "console" && text != "qt") throw UsageError("--ui vuole console o qt.");
    return text;
}

bool SetOption(HostOptions& options, const std::string& name, const std::string& value) {
    if (name == "--data") {
        options.dataFolder = value;
    } else if (name == "--clinic") {
        options.clinic = ClinicNumber(value);
    } else if (name == "--odbc") {
        throw UsageError("Questa versione non si collega per ODBC: usare --data.");
    } else if (name == "--work") {
        options.workFolder = value;
    } else if (name == "--install") {
        options.installFolder = value;
    } else if (name == "--user") {
        options.user = User(value);
    } else if (name == "--settings") {
        options.settingsFile = value;
    } else if (name == "--today") {
        options.today = Day(value);
    } else if (name == "--ui") {
        options.ui = Ui(value);
    } else {
        return false;
    }
    return true;
}

}  // namespace

HostOptions HostOptions::Parse(const std::vector<std::string>& arguments) {
    HostOptions options;
    std::size_t at = 0;
    for (; at < arguments.size() && arguments[at].rfind("-", 0) == 0; ++at) {
        const std::string& name = arguments[at];
        if (name == "--json") {
            options.json = true;
        } else if (name == "--text") {
            options.text = true;
        } else if (name == "--help" || name == "-h") {
            options.help = true;
        } else if (at + 1 == arguments.size()) {
            throw UsageError("Manca il valore di " + name + ".");
        } else if (SetOption(options, name, arguments[at + 1])) {
            ++at;
        } else {
            throw UsageError("Opzione sconosciuta: " + name + ".");
        }
    }
    if (options.help) return options;
    if (at == arguments.size()) return options;
    options.command = arguments[at++];
    options.words.assign(arguments.begin() + static_cast<std::ptrdiff_t>(at), arguments.end());
    if (options.command == "init" && options.words.size() != 1) throw UsageError("init vuole una cartella.");
    return options;
}

const char* HostOptions::Usage() {
    return R"(aslhost: l'applicazione ospite di riferimento

  aslhost [opzioni]                              su uno schermo: sceglie lo studio e il componente
  aslhost init CARTELLA                          crea i database dimostrativi
  aslhost [opzioni] ASLExport [passo ...]        apre l'esportazione delle prestazioni
  aslhost [opzioni] ASLPanoramico [passo ...]    apre l'esportazione delle ricette farmaci
  aslhost [opzioni] ExportProgetti [passo ...]   apre l'esportazione dei progetti
  aslhost [opzioni] ASLImportPatient [passo ...] apre l'importazione dei pazienti

  --data CARTELLA    cartella dei database     --clinic N        numero dello studio (12)
  --work CARTELLA    cartella di lavoro        --install CARTELLA  cartella di installazione
                                               (Installazione nella cartella dei database, se c'è)
  --settings FILE    impostazioni (ini)        --today AAAA-MM-GG  la data di oggi
  --user NOME        chi usa l'applicazione (OPERATORE)
  --ui console|qt    come si mostrano le finestre (qt su un terminale con uno schermo e senza passi)
  --json             un oggetto JSON per riga (sempre, quando l'uscita non è un terminale)
  --text             righe da leggere, anche quando l'uscita non è un terminale

passi:  NOME=VALORE  NOME!  NOME!RIGA  NOME?  key:NOME=Ctrl+R  answer:yes|no|FILE|cancel  help:
        in:FINESTRA passo ... end:
)";
}

}  // namespace vlm::host
