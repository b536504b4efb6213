#include "support/QtUser.h"

#include <QApplication>
#include <QFileDialog>
#include <QLineEdit>
#include <QMessageBox>
#include <QPointer>
#include <QPushButton>
#include <QTest>
#include <QTimer>
#include <algorithm>
#include <functional>
#include <gtest/gtest.h>
#include <memory>
#include <stdexcept>

#include "controls/QtText.h"
#include "dialogs/Grid.h"
#include "support/ControlHands.h"
#include "support/ControlSight.h"
#include "values/Utf8.h"

namespace vlm::ui::test {

namespace {

/// Runs `action` once `ready` says so, from within the event loop that a window runs.
void Once(const std::function<bool()>& ready, const std::function<void()>& action) {
    QTimer::singleShot(0, [ready, action] { ready() ? action() : Once(ready, action); });
}

template <class Window>
void OnceUp(const std::function<void(Window&)>& action) {
    const auto up = [] {
        auto* window = qobject_cast<Window*>(QApplication::activeModalWidget());
        return window != nullptr && window->isVisible() ? window : nullptr;
    };
    Once([up] { return up() != nullptr; }, [up, action] { action(*up()); });
}

int QtKeyOf(int code) {
    switch (code) {
        case kKeyEscape:
            return Qt::Key_Escape;
        case kKeyReturn:
            return Qt::Key_Return;
        case kKeyTab:
            return Qt::Key_Tab;
        default:
            return code >= kKeyF1 && code <= kKeyF12 ? Qt::Key_F1 + code - kKeyF1 : code;
    }
}

Qt::KeyboardModifiers QtModifiersOf(int shift) {
    Qt::KeyboardModifiers modifiers;
    if (shift & kShift) modifiers |= Qt::ShiftModifier;
    if (shift & kCtrl) modifiers |= Qt::ControlModifier;
    if (shift & kAlt) modifiers |= Qt::AltModifier;
    return modifiers;
}

}  // namespace

void QtUser::ShowModal(Dialog& dialog) {
    std::vector<ScriptStep> steps = script_.Take(dialog.Name(), depth_ > 0);
    bool shown = false;
    const auto ended = std::make_shared<bool>(false);
    // Not in the event loop of a message that the dialog shows while it opens.
    const auto ready = [ended, name = ToQt(dialog.Name())] {
        const QWidget* active = QApplication::activeModalWidget();
        return *ended || (active != nullptr && active->objectName() == name);
    };
    Once(ready, [this, ended, &dialog, &shown, steps] {
        if (*ended) return;
        shown = true;
        log_.DialogOpened(dialog);
        Play(dialog, steps);
    });
    ++depth_;
    try {
        toolkit_.ShowModal(dialog);
    } catch (...) {
        --depth_;
        *ended = true;
        if (shown) log_.DialogClosed(dialog);
        throw;
    }
    --depth_;
    *ended = true;
    if (shown) log_.DialogClosed(dialog);
}

void QtUser::Play(Dialog& dialog, std::vector<ScriptStep> steps) {
    QWidget* window = toolkit_.TopWindow();
    for (const ScriptStep& step : steps) {
        if (dialog.IsClosing()) break;
        // After a message, which had the keys, a desktop gives them back; here nobody does.
        if (QApplication::activeWindow() != window) window->activateWindow();
        EXPECT_TRUE(QTest::qWaitFor([window] { return QApplication::activeWindow() == window; })) << dialog.Name();
        Do(dialog, step);
        if (dialog.IsClosing()) break;
        EXPECT_EQ(Differences(dialog, toolkit_), "") << "after " << step.text;
        focuses_.push_back(FocusIn(dialog));
    }
    if (!dialog.IsClosing()) window->close();
    if (!dialog.IsClosing()) dialog.Close();
}

std::string QtUser::FocusIn(const Dialog& dialog) const {
    const QWidget* focus = toolkit_.TopWindow()->focusWidget();
    for (const Control* control : dialog.Controls()) {
        ControlWidget* widget = focus != nullptr ? toolkit_.Find(*control) : nullptr;
        if (widget == nullptr) continue;
        if (&widget->Widget() == focus || widget->Widget().isAncestorOf(focus)) return control->Name();
    }
    return {};
}

void QtUser::Do(Dialog& dialog, const ScriptStep& step) {
    using Kind = ScriptStep::Kind;
    if (step.kind == Kind::Answer || step.kind == Kind::Block) return script_.Keep(step);
    if (step.kind == Kind::Press) return Press(dialog, step);
    if (step.kind == Kind::Help) {
        QTest::keyClick(QApplication::focusWidget(), Qt::Key_F1);
        return;
    }
    Control* control = dialog.Find(step.name);
    if (control == nullptr) throw std::runtime_error("no control for " + step.text);
    if (step.kind == Kind::State) {
        StateAsked(control->Name(), *toolkit_.TopWindow());
        return log_.State(*control);
    }
    ControlWidget* widget = toolkit_.Find(*control);
    if (widget == nullptr || !widget->Widget().isVisible() || !widget->Widget().isEnabled()) {
        ADD_FAILURE() << step.text << ": the control is out of reach";
        return;
    }
    if (step.kind == Kind::Set) return Enter(*widget, step.value);
    if (step.kind == Kind::Row) return ClickRow(*widget, step.row - 1);
    ClickOnce(*widget);
}

void QtUser::Press(Dialog& dialog, const ScriptStep& step) {
    QWidget* receiver = QApplication::focusWidget() != nullptr ? QApplication::focusWidget() : toolkit_.TopWindow();
    if (!step.name.empty()) {
        ControlWidget* widget = toolkit_.Find(*dialog.Find(step.name));
        widget->TakeFocus();
        receiver = QApplication::focusWidget();
    }
    const auto key = static_cast<Qt::Key>(QtKeyOf(step.key.code));
    const QPointer<QWidget> there = receiver;
    QTest::keyPress(receiver, key, QtModifiersOf(step.key.shift));
    // A button that its letter pressed is let go a moment later.
    const bool released = QTest::qWaitFor([] {
        const auto* window = QApplication::activeModalWidget();
        const auto buttons = window != nullptr ? window->findChildren<QAbstractButton*>() : QList<QAbstractButton*>();
        return std::none_of(buttons.begin(), buttons.end(), [](const QAbstractButton* each) { return each->isDown(); });
    });
    EXPECT_TRUE(released);
    QWidget* now = QApplication::focusWidget();
    if (!dialog.IsClosing() && (there || now))
        QTest::keyRelease(there ? there.data() : now, key, QtModifiersOf(step.key.shift));
}

Answer QtUser::Show(const Message& message) {
    const ScriptStep* next = script_.NextAnswer();
    QMessageBox::StandardButton button = QMessageBox::Ok;
    if (message.buttons == Buttons::YesNo) {
        const bool yes = next != nullptr && text::EqualNoCase(next->value, "yes");
        button = yes ? QMessageBox::Yes : QMessageBox::No;
        if (next != nullptr) script_.DropAnswer();
    }
    OnceUp<QMessageBox>([this, button](QMessageBox& box) {
        MessageUp(box);
        QTest::mouseClick(box.button(button), Qt::LeftButton);
    });
    const Answer answer = toolkit_.Show(message);
    log_.MessageShown(message, answer);
    return answer;
}

std::optional<std::string> QtUser::NextPath() {
    const ScriptStep* next = script_.NextAnswer();
    if (next == nullptr) return std::nullopt;
    std::optional<std::string> path = next->value;
    if (text::EqualNoCase(*path, "cancel")) path.reset();
    script_.DropAnswer();
    return path;
}

void QtUser::AnswerChooser(const std::optional<std::string>& answer) {
    OnceUp<QFileDialog>([this, answer](QFileDialog& chooser) {
        MessageUp(chooser);
        if (!answer) {
            QTest::keyClick(&chooser, Qt::Key_Escape);
            return;
        }
        auto* name = chooser.findChild<QLineEdit*>("fileNameEdit");
        name->setText(ToQt(*answer));
        QTest::keyClick(name, Qt::Key_Return);
    });
}

std::optional<std::string> QtUser::ChooseFile(const FileChoice& choice) {
    AnswerChooser(NextPath());
    const std::optional<std::string> chosen = toolkit_.ChooseFile(choice);
    log_.FileChosen(choice, chosen);
    return chosen;
}

std::optional<std::string> QtUser::ChooseFolder(const std::string& startFolder) {
    AnswerChooser(NextPath());
    const std::optional<std::string> chosen = toolkit_.ChooseFolder(startFolder);
    log_.FolderChosen(startFolder, chosen);
    return chosen;
}

void QtUser::SetPointer(Pointer pointer) {
    toolkit_.SetPointer(pointer);
    log_.PointerChanged(pointer);
}

}  // namespace vlm::ui::test
