#pragma once

#include <iosfwd>

#include "host/Desktop.h"
#include "host/HostOptions.h"

namespace vlm::host {

/// Exit statuses of `aslhost`.
enum ExitStatus : int { kDone = 0, kFailed = 1, kCannotDo = 2 };

/// Does what the command line says, as the host application would: opens the clinic's database, creates the component,
/// gives it what it needs and shows its dialog. `terminal` tells whether `out` is one; without a desktop every dialog
/// is played on the console.
int RunHost(const std::vector<std::string>& arguments, std::ostream& out, std::ostream& err, bool terminal,
            Desktop* desktop = nullptr);

}  // namespace vlm::host
