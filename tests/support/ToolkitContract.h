#pragma once

#include <gtest/gtest.h>
#include <memory>
#include <ostream>
#include <string>
#include <vector>

#include "console/EventLog.h"
#include "dialogs/Toolkit.h"

namespace vlm::ui::test {

/// A toolkit of windows, before which a user does a script's steps with mouse and keys and writes down what happens as
/// the console does.
struct WindowedToolkit {
    const char* name;
    std::unique_ptr<Toolkit> (*makeUser)(const std::vector<std::string>& words, EventLog& log);
};

inline void PrintTo(const WindowedToolkit& toolkit, std::ostream* out) { *out << toolkit.name; }

/// What every toolkit of windows promises: the same dialog with the same steps acts as it does on the console. Its own
/// test file runs it: INSTANTIATE_TEST_SUITE_P(Name, ToolkitContract, ::testing::Values(WindowedToolkit{...}));
class ToolkitContract : public ::testing::TestWithParam<WindowedToolkit> {};

}  // namespace vlm::ui::test
