#pragma once

#include "dialogs/ToolkitModule.h"

namespace vlm::test {

/// What the component library calls the toolkit that a test program gives.
inline constexpr const char* kGivenToolkit = "given";

}  // namespace vlm::test

/// From now on the library shows its dialogs by `toolkit`, which outlives its use.
VLM_TOOLKIT_MODULE void VlmGiveToolkit(vlm::ui::Toolkit* toolkit);
