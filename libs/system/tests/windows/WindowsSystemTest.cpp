#include <gtest/gtest.h>

#include "support/Caught.h"
#include "system/Registry.h"
#include "system/ShellProgramStarter.h"
#include "values/Error.h"

namespace vlm::sys {
namespace {

constexpr const char* kSettingsKey = "Software\\VB and VBA Program Settings\\Aldra";
constexpr const char* kPathsKey = "Software\\Microsoft\\Windows\\CurrentVersion\\App Paths\\Aldra.exe";

TEST(RegistrySettingsStore, StandsWhereTheHostsLanguageKeepsItsSettings) {
    ASSERT_EQ(registry::Remove(HKEY_CURRENT_USER, kSettingsKey), ERROR_SUCCESS);
    RegistrySettingsStore store;
    EXPECT_EQ(store.Get("Aldra", "Settings", "ASLPath", "d"), "d");
    for (const std::string& value : {std::string(), std::string("C:\\Città €\\"), std::string(1000, 'x')}) {
        store.Save("Aldra", "Settings", "ASLPath", value);
        EXPECT_EQ(store.Get("aldra", "settings", "aslpath", "d"), value);
    }
    store.Save("Aldra", "Settings", "Owner", "7");
    EXPECT_EQ(registry::Read(HKEY_CURRENT_USER, std::string(kSettingsKey) + "\\Settings", "Owner"), "7");
    EXPECT_EQ(store.Get("Aldra", "Altro", "Owner", "d"), "d");
    EXPECT_THROW(store.Save("Aldra", "Settings", "", "v"), Error);
    EXPECT_EQ(registry::Remove(HKEY_CURRENT_USER, kSettingsKey), ERROR_SUCCESS);
    EXPECT_EQ(registry::Remove(HKEY_CURRENT_USER, kSettingsKey), ERROR_SUCCESS) << "nothing there is as good";
}

TEST(RegistryInstallFolder, ReadsWhatTheSetupEntered) {
    registry::Remove(HKEY_LOCAL_MACHINE, kPathsKey);
    EXPECT_EQ(RegistryInstallFolder().Path(), "");
    ASSERT_EQ(registry::Write(HKEY_LOCAL_MACHINE, kPathsKey, "Path", "C:\\Programmi\\Aldra\\"), ERROR_SUCCESS);
    EXPECT_EQ(RegistryInstallFolder().Path(), "C:\\Programmi\\Aldra");
    registry::Remove(HKEY_LOCAL_MACHINE, kPathsKey);
}

TEST(ShellProgramStarter, FindsProgramsByNameAndTellsWhichIsNotThere) {
    ShellProgramStarter().Start("cmd.exe /c exit");
    ShellProgramStarter().Start("\"C:\\windows\\system32\\cmd.exe\" /c exit");
    for (const char* line : {"there-is-no-such-program.exe x", "\"C:\\no such\\program.exe\" x", ""}) {
        EXPECT_NE(vlm::test::CaughtText([&] { ShellProgramStarter().Start(line); }).find("programma non trovato"),
                  std::string::npos)
            << line;
    }
}

}  // namespace
}  // namespace vlm::sys
