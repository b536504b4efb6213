#pragma once

#include "dialogs/Toolkit.h"
#include "system/ProgramStarter.h"

namespace vlm::host {

/// Shows text files in dialogs of this program, where they can be searched: anomaly reports as a list, others line by
/// line. From there, and for every other command, the machine's own programs start.
class WindowedProgramStarter : public sys::ProgramStarter {
public:
    WindowedProgramStarter(ui::Toolkit& toolkit, sys::ProgramStarter& machine) : toolkit_(toolkit), machine_(machine) {}

    /// Returns when the dialog has closed. Throws Error also when the text cannot be read.
    void Start(const std::string& commandLine) override;

private:
    void ShowText(const std::string& path, const std::string& commandLine);
    void StartOnMachine(const std::string& commandLine);

    ui::Toolkit& toolkit_;
    sys::ProgramStarter& machine_;
};

}  // namespace vlm::host
