#include "DialogForm.h"

#include <QHBoxLayout>
#include <QPushButton>
#include <algorithm>

#include "controls/GridWidget.h"
#include "controls/QtText.h"
#include "dialogs/Grid.h"

namespace vlm::ui {

namespace {

constexpr int kLabelColumn = 0;
constexpr int kFieldColumn = 1;
constexpr int kAboveButtons = 8;
constexpr int kNarrowestButton = 88;

/// What is hidden keeps its room, so that nothing jumps when it comes back; a grid leaves its room to the next one, a
/// button to the field beside it.
void KeepRoom(QWidget& part, const Control& control) {
    QSizePolicy policy = part.sizePolicy();
    policy.setRetainSizeWhenHidden(control.Kind() != ControlKind::Grid && control.Kind() != ControlKind::Button);
    part.setSizePolicy(policy);
}

bool AnyOf(const Dialog::Row& row, bool (Control::*state)() const noexcept) {
    return std::any_of(row.cells.begin(), row.cells.end(), [state](const Dialog::Cell& cell) {
        return std::any_of(cell.stack.begin(), cell.stack.end(),
                           [state](const Control* each) { return each->Visible() && (each->*state)(); });
    });
}

}  // namespace

DialogForm::DialogForm(const Dialog& dialog, WidgetHost& host, QWidget& window)
    : dialog_(dialog), host_(host), window_(window) {
    blocks_[nullptr] = {new QGridLayout(&window), HasLabels(nullptr)};
    for (const Dialog::Row& row : dialog.Rows()) AddRow(row);
    QGridLayout& outer = *blocks_[nullptr].grid;
    if (!heightens_) outer.setRowStretch(outer.rowCount(), 1);
    AlignLabels();
    AlignButtons();
    AddButtons(outer);
    for (const Control* control : dialog.Controls()) ShowState(*control);
    for (const ShownRow& shown : rows_) ShowLabel(shown);
    ChainTabs();
}

ControlWidget* DialogForm::Find(const Control& control) const {
    const auto found = widgets_.find(&control);
    return found == widgets_.end() ? nullptr : found->second.get();
}

Control* DialogForm::ControlOf(const QWidget* widget) const {
    for (; widget != nullptr && widget != &window_; widget = widget->parentWidget()) {
        for (const auto& [control, each] : widgets_) {
            if (&each->Widget() == widget) return &each->Shown();
        }
    }
    return nullptr;
}

bool DialogForm::HasLabels(const Frame* frame) const {
    return std::any_of(dialog_.Rows().begin(), dialog_.Rows().end(),
                       [frame](const Dialog::Row& row) { return row.frame == frame && !row.label.empty(); });
}

DialogForm::Block& DialogForm::BlockOf(const Dialog::Row& row) {
    const auto there = blocks_.find(row.frame);
    if (there != blocks_.end()) return there->second;
    QGridLayout& outer = *blocks_[nullptr].grid;
    QWidget& box = Make(*row.frame, true).Widget();
    outer.addWidget(&box, outer.rowCount(), kLabelColumn, 1, 2);
    auto* grid = new QGridLayout(&box);
    if (row.frame->Caption().empty()) grid->setContentsMargins(0, 0, 0, 0);
    return blocks_[row.frame] = {grid, HasLabels(row.frame)};
}

void DialogForm::AddRow(const Dialog::Row& row) {
    Block& block = BlockOf(row);
    const int at = block.grid->rowCount();
    QWidget* content = MakeContent(row);
    const auto& cells = row.cells;
    const bool high = std::any_of(cells.begin(), cells.end(), [this](const Dialog::Cell& cell) {
        return std::any_of(cell.stack.begin(), cell.stack.end(),
                           [this](const Control* each) { return Find(*each)->Heightens(); });
    });
    const bool across =
        row.label.empty() && (high || !block.labels || cells.front().stack.front()->Kind() == ControlKind::Frame);
    block.grid->addWidget(content, at, across ? kLabelColumn : kFieldColumn, 1, across ? 2 : 1);
    block.grid->setColumnStretch(kFieldColumn, 1);
    if (high) {
        block.grid->setRowStretch(at, 1);
        heightens_ = heightens_ || row.frame == nullptr;
    }
    if (row.label.empty()) return;
    auto* label = new QLabel(ToQt(row.label));
    const std::vector<QWidget*> stops = Find(*cells.front().stack.front())->FocusStops();
    if (!stops.empty()) label->setBuddy(stops.front());
    const bool tall = high || cells.front().stack.front()->Kind() == ControlKind::MultiList;
    block.grid->addWidget(label, at, kLabelColumn, tall ? Qt::AlignTop : Qt::AlignVCenter);
    rows_.push_back({&row, label});
}

/// The cells side by side; those that may widen share the room, otherwise it stays at the right.
QWidget* DialogForm::MakeContent(const Dialog::Row& row) {
    auto* content = new QWidget;
    auto* line = new QHBoxLayout(content);
    line->setContentsMargins(0, 0, 0, 0);
    bool widened = false;
    for (const Dialog::Cell& cell : row.cells) {
        QWidget* part = MakeCell(row, cell);
        const bool widens = std::any_of(cell.stack.begin(), cell.stack.end(),
                                        [this](const Control* each) { return Find(*each)->Widens(); });
        line->addWidget(part, widens ? 1 : 0);
        widened = widened || widens;
    }
    if (!widened) line->addStretch(1);
    return content;
}

QWidget* DialogForm::MakeCell(const Dialog::Row& row, const Dialog::Cell& cell) {
    if (cell.stack.size() == 1) return MakePart(row, *cell.stack.front());
    auto* place = new QWidget;
    auto* stack = new QGridLayout(place);
    stack->setContentsMargins(0, 0, 0, 0);
    for (Control* control : cell.stack) stack->addWidget(MakePart(row, *control), 0, 0);
    return place;
}

/// The widget, and before it the control's own caption where that tells more than the row's label.
QWidget* DialogForm::MakePart(const Dialog::Row& row, Control& control) {
    QWidget* part = &Make(control, false).Widget();
    if (!control.HoldsCaption() && !control.Caption().empty() && control.Caption() != row.label) {
        auto* label = new QLabel(ToQt(control.Caption()));
        label->setBuddy(part);
        auto* captioned = new QWidget;
        auto* line = new QHBoxLayout(captioned);
        line->setContentsMargins(0, 0, 0, 0);
        line->addWidget(label);
        line->addWidget(part, 1);
        part = captioned;
    }
    KeepRoom(*part, control);
    return parts_[&control] = part;
}

ControlWidget& DialogForm::Make(Control& control, bool surrounds) {
    std::unique_ptr<ControlWidget>& widget = widgets_[&control];
    widget = MakeControlWidget(control, host_, surrounds);
    if (surrounds) parts_[&control] = &widget->Widget();
    return *widget;
}

void DialogForm::AddButtons(QGridLayout& outer) {
    auto* bar = new QHBoxLayout;
    bar->setContentsMargins(0, kAboveButtons, 0, 0);
    AddSearch(*bar);
    bar->addStretch(1);
    int width = kNarrowestButton;
    for (Button* button : dialog_.Buttons()) {
        QWidget& widget = Make(*button, false).Widget();
        parts_[button] = &widget;
        bar->addWidget(&widget);
        width = std::max(width, widget.sizeHint().width());
        if (button == dialog_.DefaultButton()) static_cast<QPushButton&>(widget).setDefault(true);
    }
    for (const Button* button : dialog_.Buttons()) parts_[button]->setMinimumWidth(width);
    outer.addLayout(bar, outer.rowCount(), kLabelColumn, 1, 2);
}

/// Searches the grid that is shown.
void DialogForm::AddSearch(QBoxLayout& buttons) {
    std::vector<GridWidget*> grids;
    for (const auto& [control, widget] : widgets_) {
        if (control->Kind() == ControlKind::Grid) grids.push_back(static_cast<GridWidget*>(widget.get()));
    }
    if (grids.empty()) return;
    search_ = new SearchBar;
    search_->onSearch = [this, grids](const std::string& text, bool backwards) {
        for (GridWidget* grid : grids) {
            if (dialog_.IsVisible(grid->Shown())) return grid->FindNext(text, backwards);
        }
        return false;
    };
    buttons.addWidget(search_);
}

/// Labels inside borders and outside them end at one line: the fields stand under each other.
void DialogForm::AlignLabels() {
    const auto indentOf = [](const Frame* frame, const Block& block) {
        const bool bordered = frame != nullptr && !frame->Caption().empty();
        if (!bordered) return 0;
        return block.grid->contentsMargins().left() + block.grid->parentWidget()->contentsMargins().left();
    };
    int width = 0;
    for (const ShownRow& shown : rows_) {
        const int indent = indentOf(shown.row->frame, blocks_[shown.row->frame]);
        width = std::max(width, shown.label->sizeHint().width() + indent);
    }
    for (auto& [frame, block] : blocks_) {
        if (block.labels) block.grid->setColumnMinimumWidth(kLabelColumn, width - indentOf(frame, block));
    }
}

/// Buttons that begin the rows of one block are equally wide, so that what follows stands in line.
void DialogForm::AlignButtons() {
    std::map<const Frame*, std::vector<QWidget*>> buttons;
    for (const Dialog::Row& row : dialog_.Rows()) {
        const Control& first = *row.cells.front().stack.front();
        if (first.Kind() == ControlKind::Button && row.cells.size() > 1) buttons[row.frame].push_back(parts_[&first]);
    }
    for (const auto& [frame, column] : buttons) {
        int width = 0;
        for (const QWidget* button : column) width = std::max(width, button->sizeHint().width());
        for (QWidget* button : column) button->setMinimumWidth(width);
    }
}

void DialogForm::ChainTabs() {
    QWidget* before = nullptr;
    for (const Control* control : dialog_.Controls()) {
        ControlWidget* widget = Find(*control);
        if (widget == nullptr) continue;
        inTabOrder_.push_back(widget);
        for (QWidget* stop : widget->FocusStops()) {
            if (before != nullptr) QWidget::setTabOrder(before, stop);
            before = stop;
        }
    }
    if (search_ != nullptr && before != nullptr) QWidget::setTabOrder(before, &search_->Field());
}

void DialogForm::ShowState(const Control& control) {
    const auto part = parts_.find(&control);
    if (part == parts_.end()) return;
    part->second->setEnabled(control.Enabled());
    part->second->setVisible(control.Visible());
}

void DialogForm::ShowLabel(const ShownRow& shown) {
    shown.label->setVisible(AnyOf(*shown.row, &Control::Visible));
    shown.label->setEnabled(AnyOf(*shown.row, &Control::Enabled));
}

void DialogForm::Follow(const Control& control) {
    ControlWidget* widget = Find(control);
    if (widget == nullptr) return;
    widget->Refresh();
    ShowState(control);
    for (const ShownRow& shown : rows_) ShowLabel(shown);
}

}  // namespace vlm::ui
