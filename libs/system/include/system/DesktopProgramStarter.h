#pragma once

#include <string>
#include <vector>

#include "system/ProgramStarter.h"

namespace vlm::sys {

/// Starts programs on a Linux desktop: without a shell, in a session of their own, with no terminal attached.
/// "Notepad.exe PATH" becomes the desktop's opener for PATH (all that follows, blanks too, "\" turned to "/").
class DesktopProgramStarter : public ProgramStarter {
public:
    /// Throws Error also when there is no such program.
    void Start(const std::string& commandLine) override;

    /// The program and its arguments that a command line stands for; blanks part words outside double quotes.
    static std::vector<std::string> ArgumentsOf(const std::string& commandLine);
};

}  // namespace vlm::sys
