#include <gtest/gtest.h>

#include "files/Paths.h"

namespace vlm::files {
namespace {

TEST(PathForms, TheLibraryKnowsOnlyBackslashes) {
    EXPECT_EQ(ToLibrary("/a/b\\c"), "\\a\\b\\c");
    EXPECT_EQ(ToNative("\\a\\b/c"), std::filesystem::path("/a/b/c"));
}

}  // namespace
}  // namespace vlm::files
