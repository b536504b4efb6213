#pragma once

#include <sstream>

#include "platform/ui/console/JsonEventLog.h"
#include "qt/support/QtUser.h"
#include "support/FakeServices.h"

namespace vlm::ui::test {

/// Windows with a user before them, settings in memory, and what came of a script.
struct WindowDesk {
    explicit WindowDesk(const std::vector<std::string>& words) : user(toolkit, words, log) {}

    std::ostringstream out;
    JsonEventLog log{out};
    vlm::test::FakeServices::Settings settings;
    QtToolkit toolkit{settings};
    QtUser user;
};

}  // namespace vlm::ui::test
