#pragma once

#include <memory>

#include "desktop/WindowedProgramStarter.h"
#include "host/Desktop.h"
#include "qt/QtApplication.h"
#include "qt/QtToolkit.h"
#include "system/DesktopProgramStarter.h"

namespace vlm::host {

/// The windows of this machine's desktop.
class QtDesktop : public Desktop {
public:
    /// The program's own arguments, which outlive it.
    QtDesktop(int& argc, char** argv) : argc_(argc), argv_(argv) {}

    std::string Hindrance() const override { return ui::QtApplication::Hindrance(); }
    std::string ToolkitName() const override { return "qt"; }
    void Open(sys::SettingsStore& settings) override {
        application_ = std::make_unique<ui::QtApplication>(argc_, argv_);
        toolkit_ = std::make_unique<ui::QtToolkit>(settings);
        programs_ = std::make_unique<WindowedProgramStarter>(*toolkit_, machine_);
    }
    ui::Toolkit& Toolkit() override { return *toolkit_; }
    sys::ProgramStarter& Programs() override { return *programs_; }

private:
    int& argc_;
    char** argv_;
    std::unique_ptr<ui::QtApplication> application_;
    std::unique_ptr<ui::QtToolkit> toolkit_;
    sys::DesktopProgramStarter machine_;
    std::unique_ptr<WindowedProgramStarter> programs_;
};

}  // namespace vlm::host
