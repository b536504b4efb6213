#pragma once

#include "console/EventLog.h"
#include "system/ProgramStarter.h"

namespace vlm::ui {

/// Starts nothing: tells the log what would have started.
class LoggedProgramStarter : public sys::ProgramStarter {
public:
    explicit LoggedProgramStarter(EventLog& log) : log_(log) {}
    void Start(const std::string& commandLine) override { log_.Run(commandLine); }

private:
    EventLog& log_;
};

}  // namespace vlm::ui
