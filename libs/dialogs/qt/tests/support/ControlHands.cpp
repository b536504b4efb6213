#include "support/ControlHands.h"

#include <QApplication>
#include <QCheckBox>
#include <QComboBox>
#include <QGroupBox>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QPlainTextEdit>
#include <QProgressBar>
#include <QPushButton>
#include <QRadioButton>
#include <QTest>
#include <functional>
#include <set>
#include <sstream>
#include <stdexcept>

#include "controls/GridWidget.h"
#include "controls/QtText.h"
#include "dialogs/PickList.h"
#include "values/Utf8.h"

namespace vlm::ui::test {

namespace {

using Texts = std::vector<std::string>;

/// The entries of a list of any kind.
Texts ItemsOf(const Control& list) {
    if (list.Kind() == ControlKind::MultiList) return As<MultiList>(list).Items();
    if (list.Kind() != ControlKind::PickList) return As<ChoiceControl>(list).Items();
    Texts texts;
    for (int i = 0; i < As<PickList>(list).RowCount(); ++i) texts.push_back(As<PickList>(list).TextAt(i));
    return texts;
}

/// "#2" is a position, "" none; other values are an entry's key, which is its position where it has none, or its text.
int PositionOf(const Control& list, const std::string& value) {
    if (value.empty()) return -1;
    if (value[0] == '#') return std::stoi(value.substr(1));
    const Texts items = ItemsOf(list);
    for (int i = 0; i < static_cast<int>(items.size()); ++i) {
        const int key = list.Kind() == ControlKind::PickList ? As<PickList>(list).KeyAt(i) : i;
        if (items[static_cast<std::size_t>(i)] == value || std::to_string(key) == value) return i;
    }
    throw std::runtime_error("the list has no " + value);
}

void Click(QWidget& widget, QPoint place) { QTest::mouseClick(&widget, Qt::LeftButton, {}, place); }

/// In the middle of its left end, where a box or an option has its mark.
void ClickMark(QWidget& widget) { Click(widget, {8, widget.height() / 2}); }

void ClickItem(QAbstractItemView& view, const QModelIndex& index) {
    view.scrollTo(index);
    Click(*view.viewport(), view.visualRect(index).center());
}

void Choose(QWidget& widget, int position) {
    auto& box = static_cast<QComboBox&>(widget);
    box.setFocus();
    if (position < 0) return QTest::keyClick(&box, Qt::Key_Delete);
    Click(box, box.rect().center());
    if (!QTest::qWaitFor([&box] { return box.view()->isVisible(); })) throw std::runtime_error("the list stays closed");
    QCoreApplication::processEvents();
    ClickItem(*box.view(), box.model()->index(position, 0));
}

void ChooseSeveral(QListWidget& list, const std::string& value) {
    std::set<int> wanted;
    std::istringstream positions(value);
    for (std::string each; std::getline(positions, each, ',');) wanted.insert(std::stoi(each));
    for (int row = 0; row < list.count(); ++row) {
        const bool toggles = list.item(row)->isSelected() != (wanted.count(row) != 0);
        if (toggles) ClickItem(list, list.model()->index(row, 0));
    }
}

/// The entries of a list, and the chosen ones.
std::string Listed(const Texts& items, const std::string& chosen) {
    std::string listed = chosen + " of:";
    for (const std::string& item : items) listed += " " + item + ";";
    return listed;
}

/// The current row, then the cells of every row.
std::string Rows(int current, int rows, int columns, const std::function<std::string(int, int)>& cell) {
    std::string lines = "current " + std::to_string(current) + "\n";
    for (int row = 0; row < rows; ++row) {
        for (int column = 0; column < columns; ++column) lines += cell(row, column) + "|";
        lines += "\n";
    }
    return lines;
}

/// What the user sees, read from the widget.
std::string Seen(ControlWidget& control) {
    QWidget& widget = control.Widget();
    if (const auto* label = qobject_cast<QLabel*>(&widget)) return FromQt(label->text());
    if (const auto* box = qobject_cast<QGroupBox*>(&widget)) return FromQt(box->title());
    if (const auto* button = qobject_cast<QPushButton*>(&widget)) return FromQt(button->text());
    if (const auto* note = qobject_cast<QPlainTextEdit*>(&widget)) return FromQt(note->toPlainText());
    if (const auto* box = qobject_cast<QCheckBox*>(&widget)) return box->isChecked() ? "1" : "0";
    if (const auto* bar = qobject_cast<QProgressBar*>(&widget)) return std::to_string(bar->value());
    Texts items;
    QStringList chosen;
    if (const auto* box = qobject_cast<QComboBox*>(&widget)) {
        for (int i = 0; i < box->count(); ++i) items.push_back(FromQt(box->itemText(i)));
        return Listed(items, FromQt(box->currentText()));
    }
    if (const auto* list = qobject_cast<QListWidget*>(&widget)) {
        for (int i = 0; i < list->count(); ++i) {
            items.push_back(FromQt(list->item(i)->text()));
            if (list->item(i)->isSelected()) chosen << list->item(i)->text();
        }
        return Listed(items, FromQt(chosen.join(", ")));
    }
    if (control.Shown().Kind() == ControlKind::OptionGroup) {
        for (const auto* option : widget.findChildren<QRadioButton*>()) {
            items.push_back(FromQt(option->text()));
            if (option->isChecked()) chosen << option->text();
        }
        return Listed(items, FromQt(chosen.join(", ")));
    }
    if (const auto* table = dynamic_cast<GridTable*>(&widget)) {
        const QAbstractItemModel& model = *table->model();
        return Rows(table->CurrentPlace(), model.rowCount(), model.columnCount(), [&](int row, int column) {
            const QModelIndex index = model.index(row, column);
            const QVariant box = index.data(Qt::CheckStateRole);
            const QString text = box.isValid() ? (box.toInt() == Qt::Checked ? "1" : "0") : index.data().toString();
            return (table->isColumnHidden(column) ? "hidden " : "") + FromQt(text);
        });
    }
    const auto* line = qobject_cast<QLineEdit*>(&widget);
    if (line == nullptr) line = widget.findChild<QLineEdit*>();
    return line != nullptr ? FromQt(line->text()) : std::string();
}

/// What there is to see, from the control.
std::string Held(const Control& control) {
    switch (control.Kind()) {
        case ControlKind::Label:
            return WithoutMnemonic(control.Caption());
        case ControlKind::Frame:
            return std::string(text::Trim(control.Caption()));
        case ControlKind::Button:
            return control.Caption();
        case ControlKind::FixedList:
        case ControlKind::OptionGroup:
        case ControlKind::PickList:
        case ControlKind::MultiList:
            return Listed(ItemsOf(control), control.ShownText());
        case ControlKind::Grid: {
            const GridModel* model = As<Grid>(control).Model();
            const int columns = model != nullptr ? static_cast<int>(model->Columns().size()) : 0;
            return Rows(As<Grid>(control).CurrentRow(), As<Grid>(control).RowCount(), columns,
                        [&](int row, int column) {
                            const bool visible = model->Columns()[static_cast<std::size_t>(column)].visible;
                            return (visible ? "" : "hidden ") + model->Cell(row, column);
                        });
        }
        case ControlKind::Text:
            return As<TextField>(control).Text();
        default:
            return control.ShownText();
    }
}

}  // namespace

void TypeOver(QWidget& field, const std::string& text) {
    QTest::keyClick(&field, Qt::Key_A, Qt::ControlModifier);
    QTest::keyClick(&field, Qt::Key_Delete);
    for (const QChar letter : ToQt(text)) {
        const bool plain = letter.unicode() < 0x80;
        plain ? QTest::keyClick(&field, letter.toLatin1())
              : QTest::sendKeyEvent(QTest::Click, &field, Qt::Key_unknown, letter, {});
    }
}

void Enter(ControlWidget& widget, const std::string& value) {
    Control& control = widget.Shown();
    QWidget& outer = widget.Widget();
    switch (control.Kind()) {
        case ControlKind::Text:
        case ControlKind::Number:
        case ControlKind::Date:
            widget.TakeFocus();
            TypeOver(*QApplication::focusWidget(), value);
            return QTest::keyClick(QApplication::focusWidget(), Qt::Key_Tab);
        case ControlKind::CheckBox:
            if (As<CheckBox>(control).Checked() != (value == "1")) ClickMark(outer);
            return;
        case ControlKind::OptionGroup:
            return ClickMark(*widget.FocusStops().at(static_cast<std::size_t>(PositionOf(control, value))));
        case ControlKind::FixedList:
        case ControlKind::PickList:
            return Choose(outer, PositionOf(control, value));
        case ControlKind::MultiList:
            return ChooseSeveral(static_cast<QListWidget&>(outer), value);
        default:
            throw std::runtime_error(control.Name() + " takes no value");
    }
}

void ClickOnce(ControlWidget& widget) {
    if (widget.Shown().Kind() != ControlKind::Grid) return QTest::mouseClick(&widget.Widget(), Qt::LeftButton);
    auto& view = static_cast<QAbstractItemView&>(widget.Widget());
    QTest::mouseDClick(view.viewport(), Qt::LeftButton, {}, view.visualRect(view.currentIndex()).center());
}

void ClickRow(ControlWidget& widget, int row) {
    auto& view = static_cast<QAbstractItemView&>(widget.Widget());
    const auto& model = static_cast<const GridTableModel&>(*view.model());
    int column = 0;  // of text, so that no box is clicked
    while (model.index(0, column).data(Qt::CheckStateRole).isValid()) ++column;
    ClickItem(view, model.index(model.PlaceOf(row), column));
}

std::string Differences(const Dialog& dialog, const QtToolkit& toolkit) {
    std::ostringstream found;
    for (const Control* control : dialog.Controls()) {
        ControlWidget* widget = toolkit.Find(*control);
        if (widget == nullptr) continue;
        const auto compare = [&](const char* what, const auto& shown, const auto& held) {
            if (shown != held) found << control->Name() << " " << what << ": " << shown << ", not " << held << '\n';
        };
        compare("visible", widget->Widget().isVisible(), dialog.IsVisible(*control));
        compare("enabled", widget->Widget().isEnabled(), dialog.IsEnabled(*control));
        compare("shows", Seen(*widget), Held(*control));
    }
    return found.str();
}

}  // namespace vlm::ui::test
