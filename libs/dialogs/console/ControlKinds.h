#pragma once

#include "console/JsonEventLog.h"
#include "console/ScriptStep.h"
#include "dialogs/Control.h"

/// What the console does with a control of any kind. Each kind is described in one place of ControlKinds.cpp.
namespace vlm::ui {

/// Writes the fields of a state event from "name" on into an open object.
void WriteState(const Control& control, JsonWriter& json);

/// Sets a control from the text of a Set step, as the user would: through its setter, so that its handler runs.
/// Throws ScriptError, and changes nothing, when the control takes no value or not this one.
///
/// text: as it is; date: dd/mm/yyyy, "" for none; number: "" for none; check box: 0 or 1; options and lists: "#2"
/// (from 0; "#-1" or "" for none), options also "2", pick lists also the key, lists also an entry's text; multiple
/// lists: "0,2", "" for none.
void EnterValue(Control& control, const ScriptStep& step);

/// A control in one line: "[Gennaio ▾]", "[x] Simulazione", "(•) Mensile  ( ) Trimestrale"; "" for a grid.
std::string DrawControl(const Control& control);

/// A field for what nobody else may read.
bool IsSecret(const Control& control);
/// What stands in the control, secrets as stars.
std::string ShownValue(const Control& control);

}  // namespace vlm::ui
