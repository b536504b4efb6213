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

std::vector<std::string> LinesOf(const std::string& path) {
    LineReader reader(path);
    std::vector<std::string> lines;
    while (!reader.AtEnd()) lines.emplace_back(reader.ReadLine());
    return lines;
}

TEST(LineReaderTest, ReadsLinesOfAnyEndingAndEncoding) {
    const TempFolder folder;
    const std::string large(200000, 'x');
    struct Case {
        std::string bytes;
        std::vector<std::string> lines;
    };
    for (const Case& c : std::vector<Case>{{"", {}},
                                           {"a\r\nb\r\n", {"a", "b"}},
                                           {"a\nb", {"a", "b"}},
                                           {"\r\n\n", {"", ""}},
                                           {"citt\xE0 \x80\r\n", {"città €"}},
                                           {"\xEF\xBB\xBF"
                                            "citt\xC3\xA0\n",
                                            {"città"}},
                                           {std::string("a\0b\n", 4), {std::string("a\0b", 3)}},
                                           {large + "\r\n" + large, {large, large}},
                                           {std::string(65535, 'y') + "\r\nz", {std::string(65535, 'y'), "z"}}}) {
        WriteBytes(folder / "f", c.bytes);
        EXPECT_EQ(LinesOf(folder / "f"), c.lines);
    }
    EXPECT_THROW(LineReader{folder / "none"}, Error);
}

TEST(LineWriterTest, AppearsWholeOrNotAtAll) {
    const TempFolder folder;
    const std::string path = folder / "f.txt";
    WriteBytes(path, "earlier");
    {
        LineWriter writer;
        writer.Open((folder.Path().string()) + "\\f.txt");
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
    EXPECT_TRUE(IsDirectory(folder.Path().string() + "\\"));
    EXPECT_FALSE(IsDirectory(folder / "f"));
    EXPECT_FALSE(IsDirectory(""));
    EXPECT_EQ(FactsOf(folder.Path().string() + "\\f")->size, 5U);
    EXPECT_FALSE(FactsOf(folder.Path().string()));
    EXPECT_FALSE(FactsOf(""));
}

}  // namespace
}  // namespace vlm::files
