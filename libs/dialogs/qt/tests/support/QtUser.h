#pragma once

#include <QWidget>
#include <vector>

#include "console/ConsoleScript.h"
#include "console/EventLog.h"
#include "qt/QtToolkit.h"

namespace vlm::ui::test {

/// Events without the focus, which a mouse also moves, and the progress, which windows paint.
std::vector<std::string> WithoutFocus(std::vector<std::string> events);

/// A user before the windows: does a script's steps with mouse and keys, and writes down what happens as the console
/// does. Dialogs are shown by the windows' own toolkit.
class QtUser : public Toolkit {
public:
    QtUser(QtToolkit& toolkit, const std::vector<std::string>& words, EventLog& log)
        : toolkit_(toolkit), script_(words), log_(log) {}

    void ShowModal(Dialog& dialog) override;
    Answer Show(const Message& message) override;
    std::optional<std::string> ChooseFile(const FileChoice& choice) override;
    std::optional<std::string> ChooseFolder(const std::string& startFolder) override;
    void SetPointer(Pointer pointer) override;
    bool Print(const Grid& grid, const std::string& title) override { return toolkit_.Print(grid, title); }

    /// The control that has the focus after each step, "" for none.
    const std::vector<std::string>& Focuses() const noexcept { return focuses_; }

protected:
    /// The window as it is when a state is asked for / when a message waits for its answer.
    virtual void StateAsked(const std::string& /*control*/, QWidget& /*window*/) {}
    virtual void MessageUp(QWidget& /*box*/) {}

private:
    void Play(Dialog& dialog, std::vector<ScriptStep> steps);
    void Do(Dialog& dialog, const ScriptStep& step);
    void Press(Dialog& dialog, const ScriptStep& step);
    std::string FocusIn(const Dialog& dialog) const;
    void AnswerChooser();

    QtToolkit& toolkit_;
    ConsoleScript script_;
    EventLog& log_;
    std::vector<std::string> focuses_;
    int depth_ = 0;
};

}  // namespace vlm::ui::test
