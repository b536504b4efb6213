#include <csignal>
#include <gtest/gtest.h>
#include <sys/resource.h>

#include "frame/RunFile.h"
#include "support/TempFolder.h"
#include "values/Error.h"

namespace vlm::test {
namespace {

/// Files end after that many bytes while it lives, as on a disk that is full.
class SmallDisk {
public:
    explicit SmallDisk(rlim_t bytes) : handler_(std::signal(SIGXFSZ, SIG_IGN)) {
        ::getrlimit(RLIMIT_FSIZE, &before_);
        const rlimit limit{bytes, before_.rlim_max};
        ::setrlimit(RLIMIT_FSIZE, &limit);
    }
    ~SmallDisk() {
        ::setrlimit(RLIMIT_FSIZE, &before_);
        std::signal(SIGXFSZ, handler_);
    }

private:
    rlimit before_{};
    void (*handler_)(int);
};

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
    EXPECT_EQ(ReadBytes(path), "");
    EXPECT_EQ(NamesIn(folder.Path().string()), std::vector<std::string>{"file.txt"});
}

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
        EXPECT_EQ(ReadBytes(path), "before");
        EXPECT_EQ(NamesIn(folder.Path().string()), std::vector<std::string>{"file.txt"});
    }
}

}  // namespace
}  // namespace vlm::test
