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

}  // namespace
}  // namespace vlm::host
