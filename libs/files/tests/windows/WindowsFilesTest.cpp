#include <cerrno>
#include <gtest/gtest.h>

#include "files/LineReader.h"
#include "files/LineWriter.h"
#include "files/Machine.h"
#include "files/Paths.h"
#include "support/Caught.h"
#include "support/TempFolder.h"

namespace vlm::files {
namespace {

using test::NamesIn;
using test::TempFolder;

TEST(WindowsFiles, NamesKeepTheirAccentsAndSeparators) {
    EXPECT_EQ(ToLibrary("C:\\a/b"), "C:\\a/b");
    EXPECT_EQ(ToNative("C:\\Città\\€.txt").wstring(), L"C:\\Citt\u00E0\\\u20AC.txt");
    const TempFolder folder;
    const std::string path = folder / "Perché è così €.txt";
    {
        LineWriter writer;
        writer.Open(path);
        writer.WriteLine("riga");
        writer.Deliver();
        writer.Keep();
    }
    EXPECT_TRUE(std::filesystem::exists(folder.Path() / L"Perch\u00E9 \u00E8 cos\u00EC \u20AC.txt"));
    EXPECT_EQ(FactsOf(path)->size, 6U);
    EXPECT_EQ(std::string(LineReader(path).ReadLine()), "riga");
}

TEST(WindowsFiles, AFileInUseIsNeitherLockedNorReplaced) {
    const TempFolder folder;
    const std::string path = folder / "f.txt";
    test::WriteBytes(path, "di un altro");
    {
        FileLock lock;
        FileLock second;
        EXPECT_FALSE(lock.Take(ToNative(folder / "nessuno")));
        ASSERT_TRUE(lock.Take(ToNative(path)));
        EXPECT_FALSE(second.Take(ToNative(path)));
        lock.Release();
        EXPECT_TRUE(second.Take(ToNative(path)));
    }
    OpenFile held = machine::OpenToWrite(ToNative(path));  // as a program that shares nothing
    ASSERT_NE(held, nullptr);
    EXPECT_EQ(machine::OpenToWrite(ToNative(path)), nullptr);
    EXPECT_EQ(errno, EWOULDBLOCK);
    LineWriter writer;
    writer.Open(path);
    writer.WriteLine("nuovo");
    EXPECT_NE(test::CaughtText([&] { writer.Deliver(); }).find(path), std::string::npos);
    writer.Revert();
    held.reset();
    EXPECT_EQ(NamesIn(folder.Path().string()), std::vector<std::string>{"f.txt"});
}

TEST(WindowsFiles, ErrorsOfTheSystemHaveTheirReason) {
    EXPECT_EQ(ReasonOf(std::error_code(32, std::system_category())), "file in uso da un altro programma");
    EXPECT_EQ(ReasonOf(std::error_code(112, std::system_category())), "spazio su disco esaurito");
    EXPECT_EQ(ReasonOf(std::error_code(5, std::system_category())), "accesso negato");
    const TempFolder folder;
    LineWriter writer;
    EXPECT_NE(test::CaughtText([&] { writer.Open(folder / "nessuna\\f.txt"); }).find("percorso inesistente"),
              std::string::npos);
}

}  // namespace
}  // namespace vlm::files
