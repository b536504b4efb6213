#pragma once

#include <deque>
#include <iosfwd>
#include <optional>
#include <string>
#include <vector>

#include "console/ScriptStep.h"

namespace vlm::ui {

/// What a script still holds: the main steps, the blocks kept for dialogs to come, the answers to questions to come;
/// and what it knows by the end: the step that failed, the steps that nothing used.
class ConsoleScript {
public:
    /// Throws ScriptError when the words are no script.
    explicit ConsoleScript(const std::vector<std::string>& words);

    /// The steps for a dialog that opens: the block kept longest for its name, else (but not for a dialog `nested` in
    /// another) the main steps when nobody took them yet, else none. Answers and blocks at their head are in force
    /// from now on.
    std::vector<ScriptStep> Take(const std::string& dialog, bool nested);
    /// An answer or a block, in force from now on.
    void Keep(const ScriptStep& step);
    /// The next answer, which stays; null when there is none.
    const ScriptStep* NextAnswer() const { return answers_.empty() ? nullptr : &answers_.front(); }
    void DropAnswer() { answers_.pop_front(); }

    /// Steps that a dialog could not take because it had closed.
    void LeftOver(const std::string& dialog, std::vector<ScriptStep> steps);

    /// The first step that failed. A failed script goes no further, whoever catches its exception on the way.
    void Fail(const ScriptError& error);
    const ScriptError* Failure() const { return failure_ ? &*failure_ : nullptr; }
    void ThrowIfFailed() const;

    /// One sentence a line for whatever was not used; nothing after a failure, whose sentence is the one to read.
    void ReportUnused(std::ostream& out) const;

private:
    void KeepHead(std::vector<ScriptStep>& steps);

    std::optional<std::vector<ScriptStep>> main_;
    std::deque<ScriptStep> blocks_;
    std::deque<ScriptStep> answers_;
    std::vector<std::string> leftOver_;
    std::optional<ScriptError> failure_;
};

}  // namespace vlm::ui
