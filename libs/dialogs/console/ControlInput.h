#pragma once

#include "console/ScriptStep.h"
#include "dialogs/Control.h"

namespace vlm::ui {

/// Sets a control from the text of a Set step, as the user would: through its setter, so that its handler runs.
/// Throws ScriptError, and changes nothing, when the control takes no value or not this one.
///
/// text: as it is; date: dd/mm/yyyy, "" for none; number: "" for none; check box: 0 or 1; options and lists: "#2"
/// (from 0; "#-1" or "" for none), options also "2", pick lists also the key, lists also an entry's text; multiple
/// lists: "0,2", "" for none.
void EnterValue(Control& control, const ScriptStep& step);

}  // namespace vlm::ui
