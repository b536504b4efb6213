#pragma once

#include <string>

#include "dialogs/Toolkit.h"
#include "system/ProgramStarter.h"
#include "system/SettingsStore.h"

namespace vlm::host {

/// The windows of the machine, as a program that has them hands them to the host.
class Desktop {
public:
    virtual ~Desktop() = default;
    /// Why no window can be shown now, "" when one can.
    virtual std::string Hindrance() const = 0;
    /// By what name the component library knows them.
    virtual std::string ToolkitName() const = 0;
    /// Once, before toolkit and programs are asked for. `settings` outlives them.
    virtual void Open(sys::SettingsStore& settings) = 0;
    /// For the host's own dialogs.
    virtual ui::Toolkit& Toolkit() = 0;
    virtual sys::ProgramStarter& Programs() = 0;
};

}  // namespace vlm::host
