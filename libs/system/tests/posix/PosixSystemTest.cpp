#include <cerrno>
#include <cstdlib>
#include <gtest/gtest.h>
#include <string>
#include <sys/stat.h>
#include <sys/wait.h>
#include <vector>

#include "support/Caught.h"
#include "support/TempFolder.h"
#include "system/DesktopProgramStarter.h"
#include "system/SettingsStore.h"

namespace vlm::sys::test {
namespace {

using Words = std::vector<std::string>;

TEST(IniSettingsStore, TheDefaultPathStandsInTheUsersConfiguration) {
    setenv("XDG_CONFIG_HOME", "/some/where", 1);
    EXPECT_EQ(IniSettingsStore::DefaultPath(), "/some/where/vlm/settings.ini");
    unsetenv("XDG_CONFIG_HOME");
}

TEST(DesktopProgramStarter, CommandLinesAreSplitWithoutAShell) {
    const std::vector<std::pair<const char*, Words>> cases{
        {"Notepad.exe C:\\Lavoro\\report uno.txt", {"xdg-open", "C:/Lavoro/report uno.txt"}},
        {"notepad.EXE \"/tmp/a b.txt\" ", {"xdg-open", "/tmp/a b.txt"}},
        {"cp  a\\b \"c d\" $HOME; ", {"cp", "a\\b", "c d", "$HOME;"}},
        {"\"my program\" x\"y z\"", {"my program", "xy z"}},
        {"program", {"program"}},
    };
    for (const auto& [line, words] : cases) EXPECT_EQ(DesktopProgramStarter::ArgumentsOf(line), words) << line;
}

TEST(DesktopProgramStarter, StartsWithoutWaitingAndLeavesNoChild) {
    const vlm::test::TempFolder folder;
    const std::string source = folder / "from here", pipe = folder / "to here";
    vlm::test::WriteBytes(source, "detto");
    ASSERT_EQ(mkfifo(pipe.c_str(), 0600), 0);
    DesktopProgramStarter().Start("cp \"" + source + "\" \"" + pipe + "\"");  // blocks until we read
    EXPECT_EQ(waitpid(-1, nullptr, WNOHANG), -1);
    EXPECT_EQ(errno, ECHILD);
    EXPECT_EQ(vlm::test::ReadBytes(pipe), "detto");
}

TEST(DesktopProgramStarter, AProgramThatIsNotThereIsAnErrorThatNamesIt) {
    for (const char* line : {"there-is-no-such-program x", ""}) {
        const std::string text = vlm::test::CaughtText([line] { DesktopProgramStarter().Start(line); });
        EXPECT_NE(text.find(DesktopProgramStarter::ArgumentsOf(line).front()), std::string::npos) << text;
    }
}

}  // namespace
}  // namespace vlm::sys::test
