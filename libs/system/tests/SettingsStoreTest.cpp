#include <filesystem>
#include <gtest/gtest.h>

#include "support/TempFolder.h"
#include "system/SettingsStore.h"
#include "values/Error.h"

namespace vlm::sys::test {
namespace {

namespace fs = std::filesystem;

class IniSettingsStoreTest : public testing::Test {
protected:
    IniSettingsStore Store() const { return IniSettingsStore(file_.string()); }
    void Write(const std::string& content) const {
        fs::create_directories(file_.parent_path());
        vlm::test::WriteBytes(file_.string(), content);
    }

    const vlm::test::TempFolder temporary_;
    const fs::path file_ = temporary_.Path() / "a" / "settings.ini";
};

TEST_F(IniSettingsStoreTest, WhatIsMissingReadsAsTheDefault) {
    EXPECT_EQ(Store().Get("Aldra", "Settings", "ASLPath", "d"), "d") << "no file";
    Write("[Aldra\\Altro]\nASLPath=x\n[Aldra\\Settings]\nOwner=\n");
    EXPECT_EQ(Store().Get("Aldra", "Settings", "ASLPath", "d"), "d") << "the key of another section";
    EXPECT_EQ(Store().Get("Aldra", "Settings", "Owner", "0"), "") << "an empty value is a value";
    EXPECT_EQ(Store().Get("aldra", "settings", "OWNER", "0"), "") << "names go without regard to case";
}

TEST_F(IniSettingsStoreTest, ValuesComeBackAsTheyWere) {
    for (const char* value : {"", "C:\\Nuova cartella\\", "\\\\server\\rete", "a=b=c", "  davanti e dietro  ",
                              "riga\r\nnuova\nriga\r", "\\n non è un a capo", "Città però €", "[Aldra]", ";x"}) {
        Store().Save("Aldra", "Settings", "Prima", "resta");
        Store().Save("Aldra", "Settings", "ASLPath", value);
        EXPECT_EQ(Store().Get("Aldra", "Settings", "ASLPath", "d"), value);
        EXPECT_EQ(Store().Get("Aldra", "Settings", "Prima", "d"), "resta") << value;
    }
}

TEST_F(IniSettingsStoreTest, LinesOfOthersStay) {
    Write("; nota\n\n[Aldra\\Settings]\n# altro\nASLPath=vecchio\nnon nostra\n\n[Fuori]\nASLPath=loro\n");
    Store().Save("Aldra", "Settings", "aslpath", "nuovo");
    Store().Save("Aldra", "Settings", "Owner", "3");
    Store().Save("Aldra", "Viste", "K", "v");
    EXPECT_EQ(vlm::test::ReadBytes(file_.string()),
              "; nota\n\n[Aldra\\Settings]\n# altro\naslpath=nuovo\nnon nostra\nOwner=3\n\n[Fuori]\nASLPath=loro\n\n"
              "[Aldra\\Viste]\nK=v\n");
    EXPECT_EQ(vlm::test::NamesIn(file_.parent_path()), std::vector<std::string>{"settings.ini"});
}

TEST_F(IniSettingsStoreTest, FilesOfOtherEditorsAreRead) {
    Write("\xEF\xBB\xBF[Aldra\\Settings]\r\nASLPath=C:\\Export\r\nOwner=7");
    EXPECT_EQ(Store().Get("Aldra", "Settings", "ASLPath", ""), "C:\\Export") << "a path whose \"\\\" nobody doubled";
    EXPECT_EQ(Store().Get("Aldra", "Settings", "Owner", ""), "7");
}

TEST_F(IniSettingsStoreTest, WhatCannotBeKeptIsAnError) {
    for (const char* key : {"", "a=b", "a\nb", "[a", " a"}) {
        EXPECT_THROW(Store().Save("Aldra", "Settings", key, "v"), Error) << key;
    }
    EXPECT_THROW(Store().Save("Al\ndra", "Settings", "k", "v"), Error);
    EXPECT_FALSE(fs::exists(file_));

    vlm::test::WriteBytes(temporary_ / "a", "a file where the folder should stand");
    EXPECT_THROW(Store().Save("Aldra", "Settings", "k", "v"), Error);
    EXPECT_EQ(Store().Get("Aldra", "Settings", "k", "d"), "d");
}

TEST_F(IniSettingsStoreTest, AFailedSaveLeavesTheOldFile) {
    Store().Save("Aldra", "Settings", "k", "vecchio");
    fs::create_directories(file_.string() + ".part");  // nothing can be written there, whoever runs the test
    EXPECT_THROW(Store().Save("Aldra", "Settings", "k", "nuovo"), Error);
    EXPECT_EQ(Store().Get("Aldra", "Settings", "k", ""), "vecchio");
}

}  // namespace
}  // namespace vlm::sys::test
