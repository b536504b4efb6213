#include <gtest/gtest.h>

#include "automation/Automation.h"

/// The tests run in a single-threaded apartment, as the host's interface does.
int main(int argc, char** argv) {
    testing::InitGoogleTest(&argc, argv);
    if (FAILED(CoInitialize(nullptr))) return 2;
    const int failed = RUN_ALL_TESTS();
    CoUninitialize();
    return failed;
}
