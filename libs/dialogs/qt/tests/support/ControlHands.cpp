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

/// The entries of a list, wherever they stand: how many, the key or position and the text of each, which are chosen.
struct Entries {
    int count;
    std::function<std::string(int)> text;
    std::function<bool(int)> chosen;
    std::function<int(int)> key = [](int position) { return position; };

    /// A line for each, with a mark at those that are chosen.
    std::string Marked() const {
        std::string lines;
        for (int i = 0; i < count; ++i) lines += (chosen(i) ? "x " : "- ") + text(i) + "\n";
        return lines;
    }
    /// "#2" is a position, "" none; other values are a key or a text.
    int PositionOf(const std::string& value) const {
        if (value.empty()) return -1;
        if (value[0] == '#') return std::stoi(value.substr(1));
        for (int i = 0; i < count; ++i) {
            if (text(i) == value || std::to_string(key(i)) == value) return i;
        }
        throw std::runtime_error("the list has no " + value);
    }
};

Entries EntriesOf(const std::vector<std::string>& items, const std::function<bool(int)>& chosen) {
    return {static_cast<int>(items.size()), [&items](int i) { return items[static_cast<std::size_t>(i)]; }, chosen};
}

Entries EntriesOf(const ChoiceControl& list) {
    return EntriesOf(list.Items(), [&list](int i) { return i == list.Position(); });
}

Entries EntriesOf(const PickList& list) {
    return {list.RowCount(), [&list](int i) { return list.TextAt(i); },
            [&list](int i) { return i == list.SelectedIndex(); }, [&list](int i) { return list.KeyAt(i); }};
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

/// The current row, then the cells of every row.
std::string Rows(int current, int rows, int columns, const std::function<std::string(int, int)>& cell) {
    std::string lines = "current " + std::to_string(current) + "\n";
    for (int row = 0; row < rows; ++row) {
        for (int column = 0; column < columns; ++column) lines += cell(row, column) + "|";
        lines += "\n";
    }
    return lines;
}

std::string RowsOf(const GridTable& table) {
    const QAbstractItemModel& model = *table.model();
    return Rows(table.CurrentPlace(), model.rowCount(), model.columnCount(), [&](int row, int column) {
        const QModelIndex index = model.index(row, column);
        const QVariant box = index.data(Qt::CheckStateRole);
        const QString text = box.isValid() ? (box.toInt() == Qt::Checked ? "1" : "0") : index.data().toString();
        return (table.isColumnHidden(column) ? "hidden " : "") + FromQt(text);
    });
}

std::string RowsOf(const Grid& grid) {
    if (grid.Model() == nullptr) return Rows(grid.CurrentRow(), 0, 0, {});
    const auto& columns = grid.Model()->Columns();
    return Rows(grid.CurrentRow(), grid.RowCount(), static_cast<int>(columns.size()), [&](int row, int column) {
        const bool visible = columns[static_cast<std::size_t>(column)].visible;
        return (visible ? "" : "hidden ") + grid.Model()->Cell(row, column);
    });
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
    if (const auto* table = dynamic_cast<GridTable*>(&widget)) return RowsOf(*table);
    if (const auto* box = qobject_cast<QComboBox*>(&widget)) {
        return Entries{box->count(), [box](int i) { return FromQt(box->itemText(i)); },
                       [box](int i) { return i == box->currentIndex(); }}
            .Marked();
    }
    if (const auto* list = qobject_cast<QListWidget*>(&widget)) {
        return Entries{list->count(), [list](int i) { return FromQt(list->item(i)->text()); },
                       [list](int i) { return list->item(i)->isSelected(); }}
            .Marked();
    }
    if (control.Shown().Kind() == ControlKind::OptionGroup) {
        const QList<QRadioButton*> options = widget.findChildren<QRadioButton*>();
        return Entries{static_cast<int>(options.size()), [&](int i) { return FromQt(options[i]->text()); },
                       [&](int i) { return options[i]->isChecked(); }}
            .Marked();
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
            return EntriesOf(As<ChoiceControl>(control)).Marked();
        case ControlKind::PickList:
            return EntriesOf(As<PickList>(control)).Marked();
        case ControlKind::MultiList: {
            const auto& list = As<MultiList>(control);
            return EntriesOf(list.Items(), [&list](int position) { return list.IsSelected(position); }).Marked();
        }
        case ControlKind::Grid:
            return RowsOf(As<Grid>(control));
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
        case ControlKind::OptionGroup: {
            const int position = EntriesOf(As<ChoiceControl>(control)).PositionOf(value);
            return ClickMark(*widget.FocusStops().at(static_cast<std::size_t>(position)));
        }
        case ControlKind::FixedList:
            return Choose(outer, EntriesOf(As<ChoiceControl>(control)).PositionOf(value));
        case ControlKind::PickList:
            return Choose(outer, EntriesOf(As<PickList>(control)).PositionOf(value));
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
