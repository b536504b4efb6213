#pragma once

#include <stdexcept>
#include <string>

namespace vlm::ui {

/// A step that cannot be read or cannot be done. The text is one Italian sentence that names the step.
class ScriptError : public std::runtime_error {
public:
    ScriptError(const std::string& step, const std::string& reason)
        : std::runtime_error("Il passo \"" + step + "\" non si può eseguire: " + reason + ".") {}
};

}  // namespace vlm::ui
