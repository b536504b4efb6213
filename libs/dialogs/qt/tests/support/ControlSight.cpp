#include "support/ControlSight.h"

#include <QCheckBox>
#include <QComboBox>
#include <QGroupBox>
#include <QHeaderView>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QPlainTextEdit>
#include <QProgressBar>
#include <QPushButton>
#include <QRadioButton>
#include <QTableView>
#include <sstream>

#include "controls/GridTable.h"
#include "controls/QtText.h"
#include "dialogs/Grid.h"
#include "dialogs/Mnemonic.h"
#include "dialogs/PickList.h"
#include "dialogs/ShownText.h"
#include "values/Utf8.h"

namespace vlm::ui::test {

namespace {

using TextAt = std::function<std::string(int)>;
using ChosenAt = std::function<bool(int)>;

/// A line for each entry, with a mark at those that are chosen.
std::string Marked(int count, const TextAt& text, const ChosenAt& chosen) {
    std::string lines;
    for (int i = 0; i < count; ++i) lines += (chosen(i) ? "x " : "- ") + text(i) + "\n";
    return lines;
}

std::string Marked(const std::vector<std::string>& items, const ChosenAt& chosen) {
    const TextAt text = [&items](int i) { return items[static_cast<std::size_t>(i)]; };
    return Marked(static_cast<int>(items.size()), text, chosen);
}

std::string Marked(const QComboBox& box) {
    const TextAt text = [&box](int i) { return FromQt(box.itemText(i)); };
    return Marked(box.count(), text, [&box](int i) { return i == box.currentIndex(); });
}

std::string Marked(const QListWidget& list) {
    const TextAt text = [&list](int i) { return FromQt(list.item(i)->text()); };
    return Marked(list.count(), text, [&list](int i) { return list.item(i)->isSelected(); });
}

std::string Marked(const std::vector<QWidget*>& options) {
    const auto option = [&options](int i) { return qobject_cast<QRadioButton*>(options[static_cast<std::size_t>(i)]); };
    const TextAt text = [&option](int i) { return FromQt(option(i)->text()); };
    return Marked(static_cast<int>(options.size()), text, [&option](int i) { return option(i)->isChecked(); });
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
        const std::string text =
            box.isValid() ? (box.toInt() == Qt::Checked ? "1" : "0") : FromQt(index.data().toString());
        return (table.isColumnHidden(column) ? "hidden " : "") + text;
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
    if (const auto* edit = qobject_cast<QLineEdit*>(&widget)) return FromQt(edit->text());
    if (const auto* note = qobject_cast<QPlainTextEdit*>(&widget)) return FromQt(note->toPlainText());
    if (const auto* box = qobject_cast<QCheckBox*>(&widget)) return box->isChecked() ? "1" : "0";
    if (const auto* box = qobject_cast<QComboBox*>(&widget)) return Marked(*box);
    if (const auto* list = qobject_cast<QListWidget*>(&widget)) return Marked(*list);
    if (const auto* bar = qobject_cast<QProgressBar*>(&widget)) return std::to_string(bar->value());
    if (const auto* table = dynamic_cast<GridTable*>(&widget)) return RowsOf(*table);
    if (control.Shown().Kind() == ControlKind::OptionGroup) return Marked(control.FocusStops());
    if (const auto* edit = widget.findChild<QLineEdit*>()) return FromQt(edit->text());
    return {};
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
        case ControlKind::OptionGroup: {
            const auto& list = As<ChoiceControl>(control);
            return Marked(list.Items(), [&list](int i) { return i == list.Position(); });
        }
        case ControlKind::PickList: {
            const auto& list = As<PickList>(control);
            const TextAt text = [&list](int i) { return std::string(list.TextAt(i)); };
            return Marked(list.RowCount(), text, [&list](int i) { return i == list.SelectedIndex(); });
        }
        case ControlKind::MultiList:
            return Marked(As<MultiList>(control).Items(),
                          [&](int position) { return As<MultiList>(control).IsSelected(position); });
        case ControlKind::Grid:
            return RowsOf(As<Grid>(control));
        case ControlKind::Text:
            return As<TextField>(control).Text();
        default:
            return ShownText(control);
    }
}

std::string Difference(const Dialog& dialog, const Control& control, ControlWidget& widget) {
    std::ostringstream found;
    const auto compare = [&found, &control](const char* what, const auto& shown, const auto& held) {
        if (shown != held) found << control.Name() << " " << what << ": " << shown << ", not " << held << '\n';
    };
    compare("visible", widget.Widget().isVisible(), dialog.IsVisible(control));
    compare("enabled", widget.Widget().isEnabled(), dialog.IsEnabled(control));
    compare("shows", Seen(widget), Held(control));
    return found.str();
}

}  // namespace

std::string Differences(const Dialog& dialog, const QtToolkit& toolkit) {
    std::string found;
    for (const Control* control : dialog.Controls()) {
        if (ControlWidget* widget = toolkit.Find(*control)) found += Difference(dialog, *control, *widget);
    }
    return found;
}

}  // namespace vlm::ui::test
