#include <gtest/gtest.h>

#include "frame/RunFile.h"
#include "support/SmallDisk.h"
#include "support/TempFolder.h"
#include "values/Error.h"

namespace vlm::test {
namespace {

TEST(RunFileTest, KeepsTheLinesWrittenHoweverTheRunEnds) {
    const TempFolder folder;
    const std::string path = folder / "file.txt";
    WriteBytes(path, "before");
    try {
        RunFile file;
        file.Open(path);
        file.WriteLine("uno");
        file.WriteLine("");
        EXPECT_EQ(ReadBytes(path), "before");  // what a killed run leaves
        throw Error("fine");
    } catch (const Error&) {
    }
    EXPECT_EQ(ReadBytes(path), "uno\r\n");
    {
        RunFile file;
        file.Open(path);
        file.Close();
        file.Close();
    }
    EXPECT_EQ(FilesIn(folder.Path().string()), (std::map<std::string, std::string>{{"file.txt", ""}}));
}

#ifdef VLM_SMALL_DISK
TEST(RunFileTest, AFullDiskLeavesWhatStoodThere) {
    const TempFolder folder;
    const std::string path = folder / "file.txt";
    WriteBytes(path, "before");
    for (const int lines : {100, 10000}) {  // the disk is seen to be full on closing, and while writing
        const SmallDisk disk(4096);
        const auto run = [&] {
            RunFile file;
            file.Open(path);
            for (int i = 0; i < lines; ++i) file.WriteLine(std::string(76, 'x'));
            file.Close();
        };
        EXPECT_THROW(run(), Error);
        EXPECT_EQ(FilesIn(folder.Path().string()), (std::map<std::string, std::string>{{"file.txt", "before"}}));
    }
}
#endif

}  // namespace
}  // namespace vlm::test
