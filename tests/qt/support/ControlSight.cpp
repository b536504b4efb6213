#include "qt/support/ControlSight.h"

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

#include "platform/text/Utf8.h"
#include "platform/ui/Grid.h"
#include "platform/ui/Mnemonic.h"
#include "platform/ui/PickList.h"
#include "platform/ui/ShownText.h"
#include "platform/ui/qt/controls/GridTable.h"
#include "platform/ui/qt/controls/QtText.h"

namespace vlm::ui::test {

namespace {

std::string LinesOf(std::vector<std::string> texts) {
    std::string lines;
    for (const std::string& text : texts) lines += text + "\n";
    return lines;
}

std::string EntriesOf(const QComboBox& box) {
    std::vector<std::string> texts{std::to_string(box.currentIndex())};
    for (int i = 0; i < box.count(); ++i) texts.push_back(FromQt(box.itemText(i)));
    return LinesOf(texts);
}

std::string EntriesOf(const QListWidget& list) {
    std::vector<std::string> texts;
    for (int i = 0; i < list.count(); ++i) {
        texts.push_back((list.item(i)->isSelected() ? "x " : "- ") + FromQt(list.item(i)->text()));
    }
    return LinesOf(texts);
}

std::string RowsOf(const GridTable& table) {
    std::ostringstream rows;
    rows << "current " << table.CurrentPlace() << '\n';
    const QAbstractItemModel& model = *table.model();
    for (int row = 0; row < model.rowCount(); ++row) {
        for (int column = 0; column < model.columnCount(); ++column) {
            const QModelIndex index = model.index(row, column);
            const QVariant box = index.data(Qt::CheckStateRole);
            const std::string cell =
                box.isValid() ? (box.toInt() == Qt::Checked ? "1" : "0") : FromQt(index.data().toString());
            rows << (table.isColumnHidden(column) ? "hidden " : "") << cell << '|';
        }
        rows << '\n';
    }
    return rows.str();
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
    if (const auto* box = qobject_cast<QComboBox*>(&widget)) return EntriesOf(*box);
    if (const auto* list = qobject_cast<QListWidget*>(&widget)) return EntriesOf(*list);
    if (const auto* bar = qobject_cast<QProgressBar*>(&widget)) return std::to_string(bar->value());
    if (const auto* table = dynamic_cast<GridTable*>(&widget)) return RowsOf(*table);
    if (control.Shown().Kind() == ControlKind::OptionGroup) {
        std::vector<std::string> texts;
        for (QWidget* stop : control.FocusStops()) {
            const auto* option = qobject_cast<QRadioButton*>(stop);
            texts.push_back((option->isChecked() ? "x " : "- ") + FromQt(option->text()));
        }
        return LinesOf(texts);
    }
    if (const auto* edit = widget.findChild<QLineEdit*>()) return FromQt(edit->text());
    return {};
}

std::string Marked(const std::vector<std::string>& items, const std::function<bool(int)>& chosen) {
    std::vector<std::string> texts;
    for (const std::string& item : items)
        texts.push_back((chosen(static_cast<int>(texts.size())) ? "x " : "- ") + item);
    return LinesOf(texts);
}

std::string GridHeld(const Grid& grid) {
    std::ostringstream rows;
    rows << "current " << grid.CurrentRow() << '\n';
    for (int row = 0; row < grid.RowCount(); ++row) {
        const auto& columns = grid.Model()->Columns();
        for (std::size_t column = 0; column < columns.size(); ++column) {
            rows << (columns[column].visible ? "" : "hidden ") << grid.Model()->Cell(row, static_cast<int>(column))
                 << '|';
        }
        rows << '\n';
    }
    return rows.str();
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
        case ControlKind::FixedList: {
            std::vector<std::string> texts = As<FixedList>(control).Items();
            texts.insert(texts.begin(), std::to_string(As<FixedList>(control).Position()));
            return LinesOf(texts);
        }
        case ControlKind::PickList: {
            const auto& list = As<PickList>(control);
            std::vector<std::string> texts{std::to_string(list.SelectedIndex())};
            for (int i = 0; i < list.RowCount(); ++i) texts.push_back(list.TextAt(i));
            return LinesOf(texts);
        }
        case ControlKind::OptionGroup:
            return Marked(As<OptionGroup>(control).Items(),
                          [&](int position) { return As<OptionGroup>(control).Position() == position; });
        case ControlKind::MultiList:
            return Marked(As<MultiList>(control).Items(),
                          [&](int position) { return As<MultiList>(control).IsSelected(position); });
        case ControlKind::Grid:
            return GridHeld(As<Grid>(control));
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
