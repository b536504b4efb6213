#include "support/GivenToolkit.h"

/// A module of its own, as any toolkit of the library's: the test program is linked with it, the library loads it.
namespace {

vlm::ui::Toolkit* given = nullptr;

}  // namespace

void VlmGiveToolkit(vlm::ui::Toolkit* toolkit) { given = toolkit; }

VLM_TOOLKIT_MODULE void VlmMakeToolkit(vlm::sys::SettingsStore&, std::shared_ptr<vlm::ui::Toolkit>& toolkit) {
    toolkit = {std::shared_ptr<void>(), given};
}
