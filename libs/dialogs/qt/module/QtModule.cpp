#include "dialogs/ToolkitModule.h"
#include "qt/QtApplication.h"
#include "qt/QtToolkit.h"
#include "values/Error.h"

namespace {

/// A program that is no Qt application is made one, to its end: the desktop's windows cannot be left and taken up anew.
void RequireApplication() {
    if (QApplication::instance() != nullptr) return;
    if (const std::string hindrance = vlm::ui::QtApplication::Hindrance(); !hindrance.empty()) {
        throw vlm::Error(hindrance);
    }
    static char name[] = "Aldra";
    static char* arguments[] = {name, nullptr};
    static int count = 1;
    static auto* const application = new vlm::ui::QtApplication(count, arguments);
    static_cast<void>(application);
}

}  // namespace

VLM_TOOLKIT_MODULE void VlmMakeToolkit(vlm::sys::SettingsStore& settings, std::shared_ptr<vlm::ui::Toolkit>& toolkit) {
    RequireApplication();
    toolkit = std::make_shared<vlm::ui::QtToolkit>(settings);
}
