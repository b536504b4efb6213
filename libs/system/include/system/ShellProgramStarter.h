#pragma once

#include "system/ProgramStarter.h"

namespace vlm::sys {

/// Starts programs through the system's shell, which also finds those that are known by name only.
class ShellProgramStarter : public ProgramStarter {
public:
    /// The program ends at the first blank outside double quotes; the rest are its arguments, as they stand.
    void Start(const std::string& commandLine) override;
};

}  // namespace vlm::sys
