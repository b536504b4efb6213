#include "support/QtUser.h"

#include <QCheckBox>
#include <QComboBox>
#include <QFileDialog>
#include <QKeySequence>
#include <QLineEdit>
#include <QListWidget>
#include <QMessageBox>
#include <QPointer>
#include <QScopeGuard>
#include <algorithm>
#include <gtest/gtest.h>
#include <sstream>
#include <stdexcept>

#include "ControlWidget.h"
#include "controls/GridWidget.h"
#include "controls/QtText.h"
#include "dialogs/PickList.h"
#include "values/Utf8.h"

namespace vlm::ui::test {

namespace {

void Click(QWidget& widget, QPoint place) { QTest::mouseClick(&widget, Qt::LeftButton, {}, place); }

/// In the middle of its left end, where a box or an option has its mark.
void ClickMark(QWidget& widget) { Click(widget, {8, widget.height() / 2}); }

void Choose(QComboBox& box, int position) {
    box.setFocus();
    if (position < 0) return QTest::keyClick(&box, Qt::Key_Delete);
    Click(box, box.rect().center());
    if (!QTest::qWaitFor([&box] { return box.view()->isVisible(); })) throw std::runtime_error("the list stays closed");
    QCoreApplication::processEvents();
    ClickItem(*box.view(), box.model()->index(position, 0));
}

std::string Joined(const QStringList& chosen, const QStringList& items) {
    return FromQt(chosen.join(", ") + (items.isEmpty() ? "" : " of " + items.join("|")));
}

/// What the user sees, read from the widget: of lists the chosen entries and all of them, of grids the place of the
/// current row and the cells.
std::string Seen(ControlWidget& control) {
    QWidget& widget = control.Widget();
    QStringList chosen, items;
    if (control.Shown().Kind() == ControlKind::OptionGroup) {
        for (QWidget* stop : control.FocusStops()) {
            const auto& option = static_cast<QAbstractButton&>(*stop);
            items << option.text();
            if (option.isChecked()) chosen << option.text();
        }
        return Joined(chosen, items);
    }
    if (const auto* table = dynamic_cast<GridTable*>(&widget)) {
        const QAbstractItemModel& model = *table->model();
        for (int i = 0; i < model.rowCount() * model.columnCount(); ++i) {
            const QModelIndex cell = model.index(i / model.columnCount(), i % model.columnCount());
            if (table->isColumnHidden(cell.column())) continue;
            const QVariant box = cell.data(Qt::CheckStateRole);
            items << (box.isValid() ? QString::number(box.toInt() / 2) : cell.data().toString());
        }
        return Joined({QString::number(table->CurrentPlace())}, items);
    }
    const auto* box = qobject_cast<QComboBox*>(&widget);
    const auto* list = qobject_cast<QListWidget*>(&widget);
    if (box != nullptr || list != nullptr) {
        const QAbstractItemModel& model = *(box != nullptr ? box->model() : list->model());
        for (int row = 0; row < model.rowCount(); ++row) {
            items << model.index(row, 0).data().toString();
            if (box ? row == box->currentIndex() : list->item(row)->isSelected()) chosen << items.last();
        }
        return Joined(chosen, items);
    }
    if (const auto* check = qobject_cast<QCheckBox*>(&widget)) return check->isChecked() ? "1" : "0";
    const ControlKind kind = control.Shown().Kind();
    const bool inside = kind == ControlKind::Number || kind == ControlKind::Date;
    const QWidget& holder = inside ? *widget.findChild<QLineEdit*>() : widget;
    for (const char* property : {"title", "plainText", "value", "text"}) {
        if (const QVariant value = holder.property(property); value.isValid()) return FromQt(value.toString());
    }
    return {};
}

bool IsButtonDown() {
    const QWidget* window = QApplication::activeModalWidget();
    const auto buttons = window != nullptr ? window->findChildren<QAbstractButton*>() : QList<QAbstractButton*>();
    return std::any_of(buttons.begin(), buttons.end(), [](const QAbstractButton* each) { return each->isDown(); });
}

}  // namespace

void ClickItem(QWidget& list, const QModelIndex& index) {
    auto& view = static_cast<QAbstractItemView&>(list);
    view.scrollTo(index);
    Click(*view.viewport(), view.visualRect(index).center());
}

void TypeOver(const std::string& text) {
    QWidget* const field = QApplication::focusWidget();
    QTest::keyClick(field, Qt::Key_A, Qt::ControlModifier);
    QTest::keyClick(field, Qt::Key_Delete);
    for (const QChar letter : ToQt(text)) {
        letter.unicode() < 0x80 ? QTest::keyClick(field, letter.toLatin1())
                                : QTest::sendKeyEvent(QTest::Click, field, Qt::Key_unknown, letter, {});
    }
}

void Enter(ControlWidget& widget, const std::string& value) {
    const Control& control = widget.Shown();
    if (auto* box = qobject_cast<QComboBox*>(&widget.Widget())) return Choose(*box, PositionOf(control, value));
    if (control.Kind() == ControlKind::OptionGroup) {
        return ClickMark(*widget.FocusStops().at(static_cast<std::size_t>(PositionOf(control, value))));
    }
    if (control.Kind() == ControlKind::CheckBox) {
        if (control.ShownText() != value) ClickMark(widget.Widget());
        return;
    }
    if (auto* list = qobject_cast<QListWidget*>(&widget.Widget())) {
        for (int row = 0; row < list->count(); ++row) {
            const bool wanted = ("," + value + ",").find("," + std::to_string(row) + ",") != std::string::npos;
            if (list->item(row)->isSelected() != wanted) ClickItem(*list, list->model()->index(row, 0));
        }
        return;
    }
    widget.TakeFocus();
    TypeOver(value);
    QTest::keyClick(QApplication::focusWidget(), Qt::Key_Tab);
}

void QtUser::ShowModal(Dialog& dialog) {
    const std::vector<ScriptStep> steps = script_.Take(dialog.Name(), depth_ > 0);
    bool shown = false;
    QTimer begins;  // in the event loop of the dialog's window, not of a message that it shows while it opens
    QObject::connect(&begins, &QTimer::timeout, [&] {
        const QWidget* active = QApplication::activeModalWidget();
        if (active == nullptr || active->objectName() != ToQt(dialog.Name())) return;
        begins.stop();
        shown = true;
        log_.DialogOpened(dialog);
        Play(dialog, steps);
    });
    begins.start(0);
    const auto ends = qScopeGuard([&] {
        --depth_;
        if (shown) log_.DialogClosed(dialog);
    });
    ++depth_;
    toolkit_.ShowModal(dialog);
}

void QtUser::Play(Dialog& dialog, const std::vector<ScriptStep>& steps) {
    QWidget* window = toolkit_.TopWindow();
    for (const ScriptStep& step : steps) {
        if (dialog.IsClosing()) return;
        // After a message, which had the keys, a desktop gives them back; here nobody does.
        if (QApplication::activeWindow() != window) window->activateWindow();
        EXPECT_TRUE(QTest::qWaitFor([window] { return QApplication::activeWindow() == window; })) << dialog.Name();
        Do(dialog, step);
        if (dialog.IsClosing()) return;
        EXPECT_EQ(Differences(dialog), "") << "after " << step.text;
    }
    window->close();
    dialog.Close();
}

/// Where the widgets do not show what their controls hold, a line for each. Takes down the focus as well.
std::string QtUser::Differences(const Dialog& dialog) {
    std::ostringstream found;
    const QWidget* focus = toolkit_.TopWindow()->focusWidget();
    focus_.clear();
    for (const Control* control : dialog.Controls()) {
        ControlWidget* shown = toolkit_.Find(*control);
        if (shown == nullptr) continue;
        const QWidget& widget = shown->Widget();
        if (focus_.empty() && (focus == &widget || widget.isAncestorOf(focus))) focus_ = control->Name();
        const auto compare = [&](const char* what, const auto& is, const auto& should) {
            if (is != should) found << control->Name() << " " << what << ": " << is << ", not " << should << '\n';
        };
        compare("visible", widget.isVisible(), dialog.IsVisible(*control));
        compare("enabled", widget.isEnabled(), dialog.IsEnabled(*control));
        compare("shows", Seen(*shown), Held(*control));
    }
    return found.str();
}

void QtUser::Do(Dialog& dialog, const ScriptStep& step) {
    using Kind = ScriptStep::Kind;
    if (step.kind == Kind::Answer || step.kind == Kind::Block) return script_.Keep(step);
    if (step.kind == Kind::Press) return Press(dialog, step);
    if (step.kind == Kind::Help) return QTest::keyClick(QApplication::focusWidget(), Qt::Key_F1);
    Control* control = dialog.Find(step.name);
    if (control == nullptr) throw std::runtime_error("no control for " + step.text);
    if (step.kind == Kind::State) {
        Look(*toolkit_.TopWindow());
        return log_.State(*control);
    }
    ControlWidget* shown = toolkit_.Find(*control);
    if (shown == nullptr || !shown->Widget().isVisible() || !shown->Widget().isEnabled()) {
        ADD_FAILURE() << step.text << ": the control is out of reach";
        return;
    }
    if (step.kind == Kind::Set) return Enter(*shown, step.value);
    if (control->Kind() != ControlKind::Grid) return QTest::mouseClick(&shown->Widget(), Qt::LeftButton);
    auto& table = static_cast<GridTable&>(shown->Widget());
    const auto& model = static_cast<const GridTableModel&>(*table.model());
    if (step.kind == Kind::Row) {
        int column = 0;  // of text, so that no box is clicked
        while (model.index(0, column).data(Qt::CheckStateRole).isValid()) ++column;
        return ClickItem(table, model.index(model.PlaceOf(step.row - 1), column));
    }
    QTest::mouseDClick(table.viewport(), Qt::LeftButton, {}, table.visualRect(table.currentIndex()).center());
}

void QtUser::Press(Dialog& dialog, const ScriptStep& step) {
    if (!step.name.empty()) toolkit_.Find(*dialog.Find(step.name))->TakeFocus();
    const QPointer<QWidget> receiver = QApplication::focusWidget() ? QApplication::focusWidget() : toolkit_.TopWindow();
    const QKeyCombination key = QKeySequence(ToQt(step.text.substr(step.text.find('=') + 1)))[0];
    QTest::keyPress(receiver, key.key(), key.keyboardModifiers());
    EXPECT_TRUE(QTest::qWaitFor([] { return !IsButtonDown(); })) << "the one that its letter pressed is let go";
    QWidget* const now = receiver ? receiver.data() : QApplication::focusWidget();
    if (!dialog.IsClosing() && now != nullptr) QTest::keyRelease(now, key.key(), key.keyboardModifiers());
}

std::optional<std::string> QtUser::TakeAnswer() {
    const ScriptStep* next = script_.NextAnswer();
    if (next == nullptr) return std::nullopt;
    std::string answer = next->value;
    script_.DropAnswer();
    return answer;
}

Answer QtUser::Show(const Message& message) {
    QMessageBox::StandardButton button = QMessageBox::Ok;
    if (message.buttons == Buttons::YesNo) {
        button = text::EqualNoCase(TakeAnswer().value_or("no"), "yes") ? QMessageBox::Yes : QMessageBox::No;
    }
    WhenUp<QMessageBox>([this, button](QMessageBox& box) {
        Look(box);
        QTest::mouseClick(box.button(button), Qt::LeftButton);
    });
    const Answer answer = toolkit_.Show(message);
    log_.MessageShown(message, answer);
    return answer;
}

void QtUser::AnswerChooser() {
    WhenUp<QFileDialog>([this, answer = TakeAnswer().value_or("cancel")](QFileDialog& chooser) {
        Look(chooser);
        if (text::EqualNoCase(answer, "cancel")) return QTest::keyClick(&chooser, Qt::Key_Escape);
        auto* name = chooser.findChild<QLineEdit*>("fileNameEdit");
        name->setText(ToQt(answer));
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
