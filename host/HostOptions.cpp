#include "host/HostOptions.h"

#include "values/Number.h"
#include "values/Utf8.h"

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

int Seconds(const std::string& text) {
    const std::optional<double> number = text::ParseNumber(text);
    if (!number || *number < 0 || *number > 600) throw UsageError("--wait vuole un numero di secondi da 0 a 600.");
    return static_cast<int>(*number);
}

std::string User(const std::string& text) {
    if (text.empty()) throw UsageError("--user vuole un nome.");
    return text;
}

std::string ConnectionText(const std::string& text) {
    if (text.empty()) throw UsageError("--odbc vuole un testo di connessione.");
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
        options.odbcText = ConnectionText(value);
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
    } else if (name == "--wait") {
        options.waitSeconds = Seconds(value);
    } else if (name == "--ui") {
        options.ui = Ui(value);
    } else {
        return false;
    }
    return true;
}

bool IsOption(const std::vector<std::string>& arguments, std::size_t at) {
    return at < arguments.size() && arguments[at].starts_with("-");
}

/// The option at `at`, with its value if it has one; then `at` stands behind them.
void TakeOption(HostOptions& options, const std::vector<std::string>& arguments, std::size_t& at) {
    const std::string& name = arguments[at++];
    const std::size_t equals = name.find('=');
    if (equals != std::string::npos) {  // the value may be a secret
        throw UsageError("Il valore di " + name.substr(0, equals) + " va scritto dopo uno spazio.");
    } else if (name == "--json") {
        options.json = true;
    } else if (name == "--text") {
        options.text = true;
    } else if (name == "--help" || name == "-h") {
        options.help = true;
    } else if (at == arguments.size()) {
        throw UsageError("Manca il valore di " + name + ".");
    } else if (SetOption(options, name, arguments[at])) {
        ++at;
    } else {
        throw UsageError("Opzione sconosciuta: " + name + ".");
    }
}

/// Beside the databases of a server a folder may be wanted or not.
void CheckFolder(const HostOptions& options) {
    if (options.odbcText.empty() && options.words.size() != 1) throw UsageError("init vuole una cartella.");
    if (options.words.size() > 1) throw UsageError("init vuole una cartella sola.");
}

}  // namespace

HostOptions HostOptions::Parse(const std::vector<std::string>& arguments) {
    HostOptions options;
    std::size_t at = 0;
    while (IsOption(arguments, at)) TakeOption(options, arguments, at);
    if (options.help || at == arguments.size()) return options;
    options.command = arguments[at++];
    const bool init = options.command == "init";
    while (at < arguments.size()) {
        if (init && IsOption(arguments, at))
            TakeOption(options, arguments, at);
        else
            options.words.push_back(arguments[at++]);
    }
    if (init && !options.help) CheckFolder(options);
    return options;
}

const char* HostOptions::Usage() {
    return R"(aslhost: l'applicazione ospite di riferimento

  aslhost [opzioni]                              su uno schermo: sceglie lo studio e il componente
  aslhost init CARTELLA                          crea i database dimostrativi
  aslhost init --odbc TESTO [CARTELLA]           li crea su un server, e in CARTELLA i file che li accompagnano
  aslhost [opzioni] ASLExport [passo ...]        apre l'esportazione delle prestazioni
  aslhost [opzioni] ASLPanoramico [passo ...]    apre l'esportazione delle ricette farmaci
  aslhost [opzioni] ExportProgetti [passo ...]   apre l'esportazione dei progetti
  aslhost [opzioni] ASLImportPatient [passo ...] apre l'importazione dei pazienti

  --data CARTELLA    cartella dei database     --clinic N        numero dello studio (12)
  --odbc TESTO       testo di connessione ODBC a un server, al posto di --data; la password si può
                     lasciare alla variabile ASLHOST_PWD; Dialect=QualifySchema scrive lo schema dbo
  --work CARTELLA    cartella di lavoro        --install CARTELLA  cartella di installazione
                                               (Installazione nella cartella dei database, se c'è)
  --settings FILE    impostazioni (ini)        --today AAAA-MM-GG  la data di oggi
  --user NOME        chi usa l'applicazione (OPERATORE)
  --wait SECONDI     quanto si aspetta un database che un altro sta scrivendo (10)
  --ui console|qt    come si mostrano le finestre (qt su un terminale con uno schermo e senza passi)
  --json             un oggetto JSON per riga (sempre, quando l'uscita non è un terminale)
  --text             righe da leggere, anche quando l'uscita non è un terminale
  --version          la versione, e nient'altro

passi:  NOME=VALORE  NOME!  NOME!RIGA  NOME?  key:NOME=Ctrl+R  answer:yes|no|FILE|cancel  help:
        in:FINESTRA passo ... end:
)";
}

}  // namespace vlm::host
