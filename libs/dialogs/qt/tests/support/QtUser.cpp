#include "support/QtUser.h"

#include <QApplication>
#include <QFileDialog>
#include <QKeySequence>
#include <QLineEdit>
#include <QMessageBox>
#include <QPointer>
#include <QPushButton>
#include <algorithm>
#include <functional>
#include <memory>
#include <stdexcept>

#include "controls/QtText.h"
#include "support/ControlHands.h"
#include "support/WindowDesk.h"
#include "values/Utf8.h"

namespace vlm::ui::test {

namespace {

/// Runs `action` once `ready` says so, from within the event loop that a window runs.
void Once(const std::function<bool()>& ready, const std::function<void()>& action) {
    QTimer::singleShot(0, [ready, action] { ready() ? action() : Once(ready, action); });
}

}  // namespace

std::vector<std::string> WithoutFocus(std::vector<std::string> events) {
    std::erase_if(events, [](const std::string& event) {
        return event.starts_with(R"({"event":"focus")") || event.starts_with(R"({"event":"progress")");
    });
    return events;
}

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
    const struct Showing {  // ends however the window ends
        std::function<void()> end;
        ~Showing() { end(); }
    } showing{[&] {
        --depth_;
        *ended = true;
        if (shown) log_.DialogClosed(dialog);
    }};
    ++depth_;
    toolkit_.ShowModal(dialog);
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
        ControlWidget* widget = toolkit_.Find(*control);
        if (widget == nullptr || focus == nullptr) continue;
        if (&widget->Widget() == focus || widget->Widget().isAncestorOf(focus)) return control->Name();
    }
    return {};
}

void QtUser::Do(Dialog& dialog, const ScriptStep& step) {
    using Kind = ScriptStep::Kind;
    if (step.kind == Kind::Answer || step.kind == Kind::Block) return script_.Keep(step);
    if (step.kind == Kind::Press) return Press(dialog, step);
    if (step.kind == Kind::Help) return QTest::keyClick(QApplication::focusWidget(), Qt::Key_F1);
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
    if (!step.name.empty()) toolkit_.Find(*dialog.Find(step.name))->TakeFocus();
    const QPointer<QWidget> receiver = QApplication::focusWidget() ? QApplication::focusWidget() : toolkit_.TopWindow();
    const QKeyCombination key = QKeySequence(ToQt(step.text.substr(step.text.find('=') + 1)))[0];
    QTest::keyPress(receiver, key.key(), key.keyboardModifiers());
    // A button that its letter pressed is let go a moment later.
    const bool released = QTest::qWaitFor([] {
        const auto* window = QApplication::activeModalWidget();
        const auto buttons = window != nullptr ? window->findChildren<QAbstractButton*>() : QList<QAbstractButton*>();
        return std::none_of(buttons.begin(), buttons.end(), [](const QAbstractButton* each) { return each->isDown(); });
    });
    EXPECT_TRUE(released);
    QWidget* const now = receiver ? receiver.data() : QApplication::focusWidget();
    if (!dialog.IsClosing() && now != nullptr) QTest::keyRelease(now, key.key(), key.keyboardModifiers());
}

Answer QtUser::Show(const Message& message) {
    const ScriptStep* next = script_.NextAnswer();
    QMessageBox::StandardButton button = QMessageBox::Ok;
    if (message.buttons == Buttons::YesNo) {
        const bool yes = next != nullptr && text::EqualNoCase(next->value, "yes");
        button = yes ? QMessageBox::Yes : QMessageBox::No;
        if (next != nullptr) script_.DropAnswer();
    }
    WhenUp<QMessageBox>([this, button](QMessageBox& box) {
        MessageUp(box);
        QTest::mouseClick(box.button(button), Qt::LeftButton);
    });
    const Answer answer = toolkit_.Show(message);
    log_.MessageShown(message, answer);
    return answer;
}

void QtUser::AnswerChooser() {
    std::optional<std::string> answer;
    if (const ScriptStep* next = script_.NextAnswer()) {
        if (!text::EqualNoCase(next->value, "cancel")) answer = next->value;
        script_.DropAnswer();
    }
    WhenUp<QFileDialog>([this, answer](QFileDialog& chooser) {
        MessageUp(chooser);
        if (!answer) return QTest::keyClick(&chooser, Qt::Key_Escape);
        auto* name = chooser.findChild<QLineEdit*>("fileNameEdit");
        name->setText(ToQt(*answer));
        QTest::keyClick(name, Qt::Key_Return);
    });
}

std::optional<std::string> QtUser::ChooseFile(const FileChoice& choice) {
    AnswerChooser();
    const std::optional<std::string> chosen = toolkit_.ChooseFile(choice);
    log_.FileChosen(choice, chosen);
    return chosen;
}

std::optional<std::string> QtUser::ChooseFolder(const std::string& startFolder) {
    AnswerChooser();
    const std::optional<std::string> chosen = toolkit_.ChooseFolder(startFolder);
    log_.FolderChosen(startFolder, chosen);
    return chosen;
}

void QtUser::SetPointer(Pointer pointer) {
    toolkit_.SetPointer(pointer);
    log_.PointerChanged(pointer);
}

}  // namespace vlm::ui::test
