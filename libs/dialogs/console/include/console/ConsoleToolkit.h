#pragma once

#include <iosfwd>
#include <optional>
#include <string>

#include "console/ConsoleScript.h"
#include "console/EventLog.h"
#include "dialogs/Toolkit.h"

namespace vlm::ui {

/// Shows dialogs to a script and tells a log what happens.
///
/// The first top-level dialog for which no block is kept takes the main steps; every other dialog takes the next block
/// kept for its name, or closes at once. Answers are used up by questions and choosers in their order.
///
/// A step that cannot be done throws ScriptError out of ShowModal, Show, ChooseFile or ChooseFolder, after every open
/// dialog was closed. Should somebody on the way catch it, the next call throws it again, and `Failure` keeps it.
class ConsoleToolkit : public Toolkit {
public:
    /// `log` must outlive the toolkit.
    ConsoleToolkit(ConsoleScript script, EventLog& log) : script_(std::move(script)), log_(log) {}

    void ShowModal(Dialog& dialog) override;
    Answer Show(const Message& message) override;
    std::optional<std::string> ChooseFile(const FileChoice& choice) override;
    std::optional<std::string> ChooseFolder(const std::string& startFolder) override;
    void SetPointer(Pointer pointer) override { log_.PointerChanged(pointer); }

    /// The step that could not be done; null when all went well.
    const ScriptError* Failure() const { return script_.Failure(); }
    /// Names what no dialog and no question used, one sentence a line.
    void ReportUnused(std::ostream& out) const { script_.ReportUnused(out); }

private:
    Answer AnswerTo(const Message& message);
    std::optional<std::string> AnswerToChooser();
    [[noreturn]] void Refuse(const ScriptStep& answer, const std::string& reason);

    ConsoleScript script_;
    EventLog& log_;
    int depth_ = 0;
};

}  // namespace vlm::ui
