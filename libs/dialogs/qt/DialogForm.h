#pragma once

#include <QGridLayout>
#include <QLabel>
#include <map>
#include <memory>
#include <vector>

#include "ControlWidget.h"
#include "SearchBar.h"
#include "dialogs/Dialog.h"

namespace vlm::ui {

/// The inside of a dialog's window: its rows as a form, labels before fields, rows of one frame inside its border, the
/// buttons at the bottom right. Fields that may widen take the room; grids and notes also take the height.
class DialogForm {
public:
    DialogForm(const Dialog& dialog, WidgetHost& host, QWidget& window);

    /// Null for a control that stands nowhere in the dialog.
    ControlWidget* Find(const Control& control) const;
    /// The control whose widget, or a part of it, this is; null for none.
    Control* ControlOf(const QWidget* widget) const;
    /// The widgets in tab order.
    const std::vector<ControlWidget*>& Widgets() const noexcept { return inTabOrder_; }
    /// Null where there is nothing to search in.
    SearchBar* Search() const noexcept { return search_; }
    /// A control's state changed.
    void Follow(const Control& control);

private:
    /// A grid of labels and fields: the dialog itself, or the inside of a frame.
    struct Block {
        QGridLayout* grid = nullptr;
        bool labels = false;  // some row has a label, so that all leave room for it
    };
    struct ShownRow {
        const Dialog::Row* row;
        QLabel* label;
    };

    Block& BlockOf(const Dialog::Row& row);
    bool HasLabels(const Frame* frame) const;
    void AddRow(const Dialog::Row& row);
    QWidget* MakeContent(const Dialog::Row& row);
    QWidget* MakeCell(const Dialog::Row& row, const Dialog::Cell& cell);
    QWidget* MakePart(const Dialog::Row& row, Control& control);
    ControlWidget& Make(Control& control, bool surrounds);
    void AddButtons(QGridLayout& outer);
    void AddSearch(QBoxLayout& buttons);
    void AlignLabels();
    void AlignButtons();
    void ChainTabs();
    void ShowState(const Control& control);
    void ShowLabel(const ShownRow& shown);

    const Dialog& dialog_;
    WidgetHost& host_;
    QWidget& window_;
    std::map<const Control*, std::unique_ptr<ControlWidget>> widgets_;
    std::map<const Control*, QWidget*> parts_;  // with the caption beside it, where it has one
    std::map<const Frame*, Block> blocks_;
    std::vector<ShownRow> rows_;
    std::vector<ControlWidget*> inTabOrder_;
    SearchBar* search_ = nullptr;
    bool heightens_ = false;
};

}  // namespace vlm::ui
