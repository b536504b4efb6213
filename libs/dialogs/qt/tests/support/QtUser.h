#pragma once

#include <QApplication>
#include <QTest>
#include <QTimer>
#include <functional>
#include <vector>

#include "console/ConsoleScript.h"
#include "console/EventLog.h"
#include "qt/QtToolkit.h"
#include "support/WindowUser.h"

namespace vlm::ui::test {

/// Does `deeds` once a modal window of that kind is up, in the event loop that it runs.
template <class Window>
void WhenUp(const std::function<void(Window&)>& deeds) {
    QTimer::singleShot(0, [deeds] {
        auto* window = qobject_cast<Window*>(QApplication::activeModalWidget());
        window != nullptr && window->isVisible() ? deeds(*window) : WhenUp<Window>(deeds);
    });
}

/// Sets a control of any kind from a step's value ("#2", "0,2", "01/02/2012", ...) by mouse and keys.
void Enter(ControlWidget& widget, const std::string& value);
void TypeOver(const std::string& text);
void ClickItem(QWidget& list, const QModelIndex& index);

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

    const std::string& Focus() const noexcept { return focus_; }

protected:
    /// A window when a state is asked for, a message or chooser when it waits for its answer.
    virtual void Look(QWidget& /*window*/) {}

private:
    void Play(Dialog& dialog, const std::vector<ScriptStep>& steps);
    void Do(Dialog& dialog, const ScriptStep& step);
    void Press(Dialog& dialog, const ScriptStep& step);
    std::string Differences(const Dialog& dialog);
    std::optional<std::string> TakeAnswer();
    void AnswerChooser();

    QtToolkit& toolkit_;
    ConsoleScript script_;
    EventLog& log_;
    std::string focus_;
    int depth_ = 0;
};

}  // namespace vlm::ui::test
