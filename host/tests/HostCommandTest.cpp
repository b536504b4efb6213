#include <gtest/gtest.h>
#include <sstream>

#include "host/AslHost.h"

namespace vlm::host {
namespace {

/// A desktop that says why it cannot show windows, or that nobody should open.
class NoDesktop : public Desktop {
public:
    explicit NoDesktop(std::string hindrance) : hindrance_(std::move(hindrance)) {}
    std::string Hindrance() const override { return hindrance_; }
    void Open(sys::SettingsStore&) override { throw std::runtime_error("opened"); }
    ui::Toolkit& Toolkit() override { throw std::runtime_error("no toolkit"); }
    sys::ProgramStarter& Programs() override { throw std::runtime_error("no programs"); }

private:
    std::string hindrance_;
};

struct Case {
    std::vector<std::string> arguments;
    bool terminal;
    const char* hindrance;  // null: no desktop at all
    int status;
    const char* says;
};

TEST(HostCommand, WindowsOpenWhereAPersonSitsAndNowhereElse) {
    const std::vector<std::string> at{"--data", "/niente", "--settings", "/niente/set.ini", "--work", "/tmp"};
    for (const Case& each : {
             Case{{"ASLExport"}, true, "", kFailed, "opened"},
             Case{{}, true, "", kFailed, "opened"},
             Case{{"--ui", "qt", "ASLExport"}, false, "", kFailed, "opened"},
             Case{{"--ui", "qt"}, false, "", kFailed, "opened"},
             Case{{"ASLExport"}, false, "", kFailed, "/niente"},
             Case{{"ASLExport", "cboMese?"}, true, "", kFailed, "/niente"},
             Case{{"--ui", "console", "ASLExport"}, true, "", kFailed, "/niente"},
             Case{{"--json", "ASLExport"}, true, "", kFailed, "/niente"},
             Case{{"ASLExport"}, true, "Nessuno schermo.", kFailed, "/niente"},
             Case{{"ASLExport"}, true, nullptr, kFailed, "/niente"},
             Case{{"--ui", "qt", "ASLExport"}, true, "Nessuno schermo.", kFailed, "Nessuno schermo."},
             Case{{"--ui", "qt", "ASLExport"}, true, nullptr, kCannotDo, "non ha finestre"},
             Case{{"--ui", "qt", "ASLExport", "cboMese?"}, true, "", kCannotDo, "I passi si eseguono"},
             Case{{"--ui", "gtk", "ASLExport"}, true, "", kCannotDo, "console o qt"},
             Case{{}, false, "", kCannotDo, "Manca il componente"},
             Case{{}, true, nullptr, kCannotDo, "Manca il componente"},
         }) {
        std::vector<std::string> arguments = at;
        arguments.insert(arguments.end(), each.arguments.begin(), each.arguments.end());
        NoDesktop desktop(each.hindrance != nullptr ? each.hindrance : "");
        std::ostringstream out, err;
        const int status = RunHost(arguments, out, err, each.terminal, each.hindrance != nullptr ? &desktop : nullptr);
        EXPECT_EQ(status, each.status) << testing::PrintToString(each.arguments) << err.str();
        EXPECT_NE(err.str().find(each.says), std::string::npos) << testing::PrintToString(each.arguments) << err.str();
    }
}

TEST(HostCommand, InitMakesItsDatabasesInAFolderOrOnAServer) {
    const struct {
        std::vector<std::string> arguments;
        const char* error;  // "" for none
        std::string odbc;
        std::vector<std::string> words;
    } cases[] = {
        {{"init", "demo"}, "", "", {"demo"}},
        {{"init", "--odbc", "DSN=a"}, "", "DSN=a", {}},
        {{"--odbc", "DSN=a", "init"}, "", "DSN=a", {}},
        {{"init", "--odbc", "DSN=a", "demo"}, "", "DSN=a", {"demo"}},
        {{"init", "demo", "--odbc", "DSN=a"}, "", "DSN=a", {"demo"}},
        {{"--odbc", "DSN=a", "init", "demo"}, "", "DSN=a", {"demo"}},
        {{"--odbc", "DSN=a", "ASLExport", "--odbc"}, "", "DSN=a", {"--odbc"}},
        {{"init"}, "init vuole una cartella.", "", {}},
        {{"init", "a", "b"}, "init vuole una cartella.", "", {}},
        {{"init", "--odbc", "DSN=a", "a", "b"}, "init vuole una cartella sola.", "", {}},
        {{"init", "--odbc"}, "Manca il valore di --odbc.", "", {}},
        {{"init", "--odbc", ""}, "--odbc vuole un testo di connessione.", "", {}},
        {{"init", "--odbc=PWD=segreto"}, "Il valore di --odbc va scritto dopo uno spazio.", "", {}},
        {{"init", "--obdc", "PWD=segreto"}, "Opzione sconosciuta: --obdc.", "", {}},
    };
    for (const auto& each : cases) {
        try {
            const HostOptions options = HostOptions::Parse(each.arguments);
            EXPECT_STREQ(each.error, "") << testing::PrintToString(each.arguments);
            EXPECT_EQ(options.odbcText, each.odbc) << testing::PrintToString(each.arguments);
            EXPECT_EQ(options.words, each.words) << testing::PrintToString(each.arguments);
        } catch (const UsageError& error) {
            EXPECT_STREQ(error.what(), each.error) << testing::PrintToString(each.arguments);
        }
    }
}

TEST(HostCommand, AServerThatCannotBeReachedIsToldWithoutItsPassword) {
    std::ostringstream out, err;
    const std::string text = "Driver={nessuno};Server=localhost;Port=1;UID=sa;PWD=segreto";
    EXPECT_EQ(RunHost({"init", "--odbc", text}, out, err, false), kFailed);
    EXPECT_EQ(out.str(), "");
    EXPECT_NE(err.str(), "");
    EXPECT_EQ(err.str().find("segreto"), std::string::npos) << err.str();
}

}  // namespace
}  // namespace vlm::host
