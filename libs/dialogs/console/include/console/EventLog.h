#pragma once

#include <optional>
#include <string>

#include "dialogs/Toolkit.h"
#include "system/ProgramStarter.h"

namespace vlm::ui {

/// Tells whoever watches what a script makes happen, in the order it happens.
class EventLog {
public:
    virtual ~EventLog() = default;

    virtual void DialogOpened(const Dialog& dialog) = 0;
    virtual void DialogClosed(const Dialog& dialog) = 0;
    virtual void MessageShown(const Message& message, Answer answer) = 0;
    /// `answer` is nothing when the chooser was cancelled.
    virtual void FileChosen(const FileChoice& choice, const std::optional<std::string>& answer) = 0;
    virtual void FolderChosen(const std::string& startFolder, const std::optional<std::string>& answer) = 0;
    virtual void State(const Control& control) = 0;
    virtual void FocusMoved(const Control& control) = 0;
    /// A program would start.
    virtual void Run(const std::string& command) = 0;
    virtual void Progress(int percent) = 0;
    virtual void Help(int context) = 0;
    virtual void PointerChanged(Pointer pointer) = 0;

    // What the script itself did, for people who read along.
    virtual void ValueEntered(const Control& /*control*/) {}
    virtual void ButtonClicked(const Control& /*control*/) {}
};

/// Starts nothing: tells the log what would have started.
class LoggedProgramStarter : public sys::ProgramStarter {
public:
    explicit LoggedProgramStarter(EventLog& log) : log_(log) {}
    void Start(const std::string& commandLine) override { log_.Run(commandLine); }

private:
    EventLog& log_;
};

}  // namespace vlm::ui
