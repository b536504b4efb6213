#include <cstdlib>
#include <gtest/gtest.h>

#include "system/SettingsStore.h"

namespace vlm::sys::test {
namespace {

TEST(IniSettingsStore, TheDefaultPathStandsInTheUsersConfiguration) {
    setenv("XDG_CONFIG_HOME", "/some/where", 1);
    EXPECT_EQ(IniSettingsStore::DefaultPath(), "/some/where/vlm/settings.ini");
    unsetenv("XDG_CONFIG_HOME");
}

}  // namespace
}  // namespace vlm::sys::test
