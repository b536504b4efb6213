#pragma once

#include <iosfwd>
#include <string>
#include <vector>

#include "console/EventLog.h"

namespace vlm::ui {

/// Italian lines for a person at a terminal: dialogs and messages are drawn, the script's own steps are told.
/// Dialogs that stand in another one are set in from the left.
class TextEventLog : public EventLog {
public:
    explicit TextEventLog(std::ostream& out) : out_(out) {}

    void DialogOpened(const Dialog& dialog) override;
    void DialogClosed(const Dialog& dialog) override;
    void MessageShown(const Message& message, Answer answer) override;
    void FileChosen(const FileChoice& choice, const std::optional<std::string>& answer) override;
    void FolderChosen(const std::string& startFolder, const std::optional<std::string>& answer) override;
    void State(const Control& control) override;
    void FocusMoved(const Control& control) override;
    void Run(const std::string& command) override;
    void Progress(int percent) override;
    void Help(int context) override;
    void PointerChanged(Pointer /*pointer*/) override {}
    void ValueEntered(const Control& control) override;
    void ButtonClicked(const Control& control) override;

private:
    void Write(const std::string& line);
    void Write(const std::vector<std::string>& lines);

    std::ostream& out_;
    int depth_ = 0;
    bool inProgress_ = false;  // the last line is a bar that is still growing
};

}  // namespace vlm::ui
