#include "desktop/QtDesktop.h"

namespace vlm::host {

void QtDesktop::Open(sys::SettingsStore& settings) {
    application_ = std::make_unique<ui::QtApplication>(argc_, argv_);
    toolkit_ = std::make_unique<ui::QtToolkit>(settings);
    programs_ = std::make_unique<WindowedProgramStarter>(*toolkit_, machine_);
}

}  // namespace vlm::host
