#include <gtest/gtest.h>
#include <sstream>

#include "host/AslHost.h"
#include "support/Words.h"

namespace vlm::host {
namespace {

using test::operator+;
using Words = std::vector<std::string>;

/// A desktop that says why it cannot show windows, or that nobody should open.
class NoDesktop : public Desktop {
public:
    explicit NoDesktop(std::string hindrance) : hindrance_(std::move(hindrance)) {}
    std::string Hindrance() const override { return hindrance_; }
    std::string ToolkitName() const override { return "qt"; }
    void Open(sys::SettingsStore&) override { throw std::runtime_error("opened"); }
    ui::Toolkit& Toolkit() override { throw std::runtime_error("no toolkit"); }
    sys::ProgramStarter& Programs() override { throw std::runtime_error("no programs"); }

private:
    std::string hindrance_;
};

TEST(HostCommand, WindowsOpenWhereAPersonSitsAndNowhereElse) {
    const Words at{"--data", "/niente", "--settings", "/niente/set.ini", "--work", "/tmp"};
    // Whether a person sits there, what hinders the desktop (null: there is none), what comes of it.
    const std::tuple<Words, bool, const char*, int, const char*> cases[] = {
        {{"ASLExport"}, true, "", kFailed, "opened"},
        {{}, true, "", kFailed, "opened"},
        {{"--ui", "qt", "ASLExport"}, false, "", kFailed, "opened"},
        {{"ASLExport"}, false, "", kFailed, "/niente"},
        {{"ASLExport", "cboMese?"}, true, "", kFailed, "/niente"},
        {{"--ui", "console", "ASLExport"}, true, "", kFailed, "/niente"},
        {{"--json", "ASLExport"}, true, "", kFailed, "/niente"},
        {{"ASLExport"}, true, "Nessuno schermo.", kFailed, "/niente"},
        {{"ASLExport"}, true, nullptr, kFailed, "/niente"},
        {{"--ui", "qt", "ASLExport"}, true, "Nessuno schermo.", kFailed, "Nessuno schermo."},
        {{"--ui", "qt", "ASLExport"}, true, nullptr, kCannotDo, "non ha finestre"},
        {{"--ui", "qt", "ASLExport", "cboMese?"}, true, "", kCannotDo, "I passi si eseguono"},
        {{"--ui", "gtk", "ASLExport"}, true, "", kCannotDo, "console o qt"},
        {{}, false, "", kCannotDo, "Manca il componente"},
        {{}, true, nullptr, kCannotDo, "Manca il componente"},
        {{"--clinic", "0"}, true, "", kCannotDo, "--clinic vuole un numero"},
        {{"--today", "31/03/2011"}, true, "", kCannotDo, "--today vuole una data"},
        {{"--odbc", "Driver={nessuno};Server=x;PWD=segreto", "ASLExport"}, false, "", kFailed, "non è riuscito"},
    };
    for (const auto& [words, terminal, hindrance, status, says] : cases) {
        NoDesktop desktop(hindrance != nullptr ? hindrance : "");
        std::ostringstream out, err;
        EXPECT_EQ(RunHost(at + words, out, err, terminal, hindrance != nullptr ? &desktop : nullptr), status)
            << testing::PrintToString(words) << err.str();
        EXPECT_NE(err.str().find(says), std::string::npos) << testing::PrintToString(words) << err.str();
        EXPECT_EQ(err.str().find("segreto"), std::string::npos) << err.str();
    }
}

TEST(HostCommand, InitMakesItsDatabasesInAFolderOrOnAServer) {
    // What it is to connect to and the words, or the error.
    const std::pair<Words, std::string> cases[] = {
        {{"init", "demo"}, ":demo"},
        {{"init", "--odbc", "DSN=a"}, "DSN=a:"},
        {{"init", "--odbc", "DSN=a", "demo"}, "DSN=a:demo"},
        {{"init", "demo", "--odbc", "DSN=a"}, "DSN=a:demo"},
        {{"--odbc", "DSN=a", "init", "demo"}, "DSN=a:demo"},
        {{"--odbc", "DSN=a", "ASLExport", "--odbc"}, "DSN=a:--odbc"},
        {{"init"}, "init vuole una cartella."},
        {{"init", "a", "b"}, "init vuole una cartella."},
        {{"init", "--odbc", "DSN=a", "a", "b"}, "init vuole una cartella sola."},
        {{"init", "--odbc"}, "Manca il valore di --odbc."},
        {{"init", "--odbc", ""}, "--odbc vuole un testo di connessione."},
        {{"init", "--odbc=PWD=segreto"}, "Il valore di --odbc va scritto dopo uno spazio."},
        {{"init", "--obdc", "PWD=segreto"}, "Opzione sconosciuta: --obdc."},
    };
    for (const auto& [words, expected] : cases) {
        std::string read;
        try {
            const HostOptions options = HostOptions::Parse(words);
            read = options.odbcText + ":";
            for (const std::string& word : options.words) read += word;
        } catch (const UsageError& error) {
            read = error.what();
        }
        EXPECT_EQ(read, expected) << testing::PrintToString(words);
    }
}

}  // namespace
}  // namespace vlm::host
