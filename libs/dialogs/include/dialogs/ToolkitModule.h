#pragma once

#include <memory>

#include "dialogs/Toolkit.h"

namespace vlm::sys {
class SettingsStore;
}

namespace vlm::ui {

/// A toolkit in a library of its own, for who shows dialogs without being linked with a desktop's windows:
/// libVlmDialogsNAME.so beside the loader, of the same build, exports the function VlmMakeToolkit. It throws Error when
/// no window can be shown. `settings` outlives the toolkit.
using ToolkitMaker = void(sys::SettingsStore& settings, std::shared_ptr<Toolkit>& toolkit);

}  // namespace vlm::ui

#define VLM_TOOLKIT_MODULE extern "C" __attribute__((visibility("default")))
