#include "support/ControlHands.h"

#include <QAbstractItemView>
#include <QApplication>
#include <QComboBox>
#include <QLineEdit>
#include <QListWidget>
#include <QRadioButton>
#include <QTest>
#include <functional>
#include <set>
#include <sstream>
#include <stdexcept>

#include "controls/GridWidget.h"
#include "controls/QtText.h"
#include "dialogs/Grid.h"
#include "dialogs/PickList.h"

namespace vlm::ui::test {

namespace {

void Click(QWidget& widget, QPoint place) { QTest::mouseClick(&widget, Qt::LeftButton, {}, place); }

/// In the middle of its left end, where a box or an option has its mark.
QPoint MarkOf(const QWidget& widget) { return {8, widget.height() / 2}; }

void ClickItem(QAbstractItemView& view, const QModelIndex& index) {
    view.scrollTo(index);
    Click(*view.viewport(), view.visualRect(index).center());
}

void Choose(QComboBox& box, int position) {
    box.setFocus();
    if (position < 0) return QTest::keyClick(&box, Qt::Key_Delete);
    Click(box, box.rect().center());
    if (!QTest::qWaitFor([&box] { return box.view()->isVisible(); })) throw std::runtime_error("the list stays closed");
    QCoreApplication::processEvents();
    ClickItem(*box.view(), box.model()->index(position, 0));
}

/// "#2" is a position, "" none; other values are what `is` says of an entry.
int PositionOf(const std::string& value, int count, const std::function<bool(int)>& is) {
    if (value.empty()) return -1;
    if (value[0] == '#') return std::stoi(value.substr(1));
    for (int i = 0; i < count; ++i) {
        if (is(i)) return i;
    }
    throw std::runtime_error("the list has no " + value);
}

int PositionIn(const PickList& list, const std::string& value) {
    return PositionOf(value, list.RowCount(),
                      [&](int i) { return std::to_string(list.KeyAt(i)) == value || list.TextAt(i) == value; });
}

int PositionIn(const ChoiceControl& list, const std::string& value) {
    const auto& items = list.Items();
    return PositionOf(value, static_cast<int>(items.size()),
                      [&](int i) { return items[static_cast<std::size_t>(i)] == value || std::to_string(i) == value; });
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

void Tick(QWidget& box, bool checked, bool wanted) {
    if (checked != wanted) Click(box, MarkOf(box));
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
            return Tick(outer, As<CheckBox>(control).Checked(), value == "1");
        case ControlKind::OptionGroup: {
            QWidget* option =
                widget.FocusStops().at(static_cast<std::size_t>(PositionIn(As<ChoiceControl>(control), value)));
            return Click(*option, MarkOf(*option));
        }
        case ControlKind::FixedList:
            return Choose(static_cast<QComboBox&>(outer), PositionIn(As<ChoiceControl>(control), value));
        case ControlKind::PickList:
            return Choose(static_cast<QComboBox&>(outer), PositionIn(As<PickList>(control), value));
        case ControlKind::MultiList:
            return ChooseSeveral(static_cast<QListWidget&>(outer), value);
        default:
            throw std::runtime_error(control.Name() + " takes no value");
    }
}

void ClickOnce(ControlWidget& widget) {
    if (widget.Shown().Kind() != ControlKind::Grid) {
        return QTest::mouseClick(&widget.Widget(), Qt::LeftButton);
    }
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

}  // namespace vlm::ui::test
