#pragma once

#include <string>

namespace vlm::sys {

/// Starts a program in a normal window and does not wait for it.
class ProgramStarter {
public:
    virtual ~ProgramStarter() = default;
    /// `commandLine` as the shell takes it ("Notepad.exe C:\...\report.txt"). Throws Error when it cannot be started.
    virtual void Start(const std::string& commandLine) = 0;
};

}  // namespace vlm::sys
