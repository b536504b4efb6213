#pragma once

#include <sstream>

#include "console/JsonEventLog.h"
#include "support/FakeServices.h"
#include "support/QtUser.h"

namespace vlm::ui::test {

/// Events without the focus, which a mouse also moves, and the progress, which windows paint.
inline std::vector<std::string> WithoutFocus(const std::vector<std::string>& events) {
    std::vector<std::string> others;
    for (const std::string& event : events) {
        const bool own = event.starts_with(R"({"event":"focus")") || event.starts_with(R"({"event":"progress")");
        if (!own) others.push_back(event);
    }
    return others;
}

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
