#include <gtest/gtest.h>

#include "files/LineReader.h"
#include "files/LineWriter.h"
#include "files/Paths.h"
#include "support/TempFolder.h"
#include "values/Error.h"

namespace vlm::files {
namespace {

using test::NamesIn;
using test::ReadBytes;
using test::TempFolder;
using test::WriteBytes;

TEST(LineReaderTest, ReadsLinesOfAnyEndingAndEncoding) {
    const TempFolder folder;
    const std::string large(200000, 'x'), block(65535, 'y'), zero("a\0b", 3);
    const std::pair<std::string, std::string> cases[] = {{"", ""},
                                                         {"a\r\nb\r\n", "a|b|"},
                                                         {"a\nb", "a|b|"},
                                                         {"\r\n\n", "||"},
                                                         {"citt\xE0 \x80\r\n", "città €|"},
                                                         {"\xEF\xBB\xBF"
                                                          "citt\xC3\xA0\n",
                                                          "città|"},
                                                         {zero + "\n", zero + '|'},
                                                         {large + "\r\n" + large, large + '|' + large + '|'},
                                                         {block + "\r\nz", block + "|z|"}};
    for (const auto& [bytes, expected] : cases) {
        WriteBytes(folder / "f", bytes);
        LineReader reader(folder / "f");
        std::string lines;
        while (!reader.AtEnd()) lines += std::string(reader.ReadLine()) + '|';
        EXPECT_EQ(lines, expected);
    }
    EXPECT_THROW(LineReader{folder / "none"}, Error);
}

TEST(LineWriterTest, AppearsWholeOrNotAtAll) {
    const TempFolder folder;
    const std::string path = folder / "f.txt";
    WriteBytes(path, "earlier");
    {
        LineWriter writer;
        writer.Open(folder.Path().string() + "\\f.txt");
        writer.WriteLine("nuovo è");
        EXPECT_EQ(ReadBytes(path), "earlier");
        LineWriter second;
        EXPECT_THROW(second.Open(path), Error);  // held exclusively
    }
    EXPECT_EQ(ReadBytes(path), "earlier");
    EXPECT_EQ(NamesIn(folder.Path()), std::vector<std::string>{"f.txt"});
    for (const bool keep : {false, true}) {
        LineWriter writer;
        writer.Open(path);
        writer.WriteLine("nuovo è");
        writer.Deliver();
        EXPECT_EQ(ReadBytes(path), "nuovo \xE8\r\n");
        if (keep) writer.Keep();
        writer.Revert();
        EXPECT_EQ(ReadBytes(path), keep ? "nuovo \xE8\r\n" : "earlier");
        EXPECT_EQ(NamesIn(folder.Path()), std::vector<std::string>{"f.txt"});
    }
    std::filesystem::remove(path);
    {
        LineWriter writer;
        writer.Open(path);
        writer.Deliver();
    }
    EXPECT_TRUE(NamesIn(folder.Path()).empty());
}

TEST(PathsTest, TellsFilesFromFolders) {
    const TempFolder folder;
    WriteBytes(folder / "f", "12345");
    const std::string path = folder.Path().string();
    EXPECT_TRUE(IsDirectory(path + "\\") && !IsDirectory(folder / "f") && !IsDirectory(""));
    EXPECT_EQ(FactsOf(path + "\\f")->size, 5U);
    EXPECT_TRUE(!FactsOf(path) && !FactsOf(""));
    EXPECT_EQ(ToLibrary(folder / "f").find('/'), std::string::npos) << "the library knows only backslashes";
    EXPECT_TRUE(ToNative(ToLibrary(folder / "f")) == test::PathOf(folder / "f"));
}

}  // namespace
}  // namespace vlm::files
