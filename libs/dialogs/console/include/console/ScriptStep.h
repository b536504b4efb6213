#pragma once

#include <stdexcept>
#include <string>
#include <vector>

#include "dialogs/Keys.h"

namespace vlm::ui {

/// One thing that a user does, as a script words it.
struct ScriptStep {
    enum class Kind {
        Set,     // NAME=VALUE
        Click,   // NAME!
        Row,     // NAME!ROW
        State,   // NAME?
        Press,   // key:NAME=KEY, key:=KEY
        Help,    // help:
        Answer,  // answer:VALUE
        Block    // in:DIALOG step ... end:
    };
    Kind kind = Kind::Help;
    std::string text;                // as it was written; "in:DIALOG" for a block
    std::string name;                // the control (may be empty for Press), the dialog of a block
    std::string value;               // of Set and Answer
    int row = 0;                     // of Row, from 1
    KeyEvent key;                    // of Press
    std::vector<ScriptStep> inside;  // of Block
};

/// A step that cannot be read or cannot be done. The text is one Italian sentence that names the step.
class ScriptError : public std::runtime_error {
public:
    ScriptError(const std::string& step, const std::string& reason)
        : std::runtime_error("Il passo \"" + step + "\" non si può eseguire: " + reason + ".") {}
};

/// Throws ScriptError for words that are no step and for an `in:` without its `end:`.
std::vector<ScriptStep> ParseSteps(const std::vector<std::string>& words);

/// The step as it was written, a block with all that stands inside.
std::string Wording(const ScriptStep& step);
std::string Wording(const std::vector<ScriptStep>& steps);

}  // namespace vlm::ui
