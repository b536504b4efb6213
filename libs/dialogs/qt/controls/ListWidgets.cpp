#include <QAbstractTableModel>
#include <QButtonGroup>
#include <QComboBox>
#include <QHBoxLayout>
#include <QHeaderView>
#include <QKeyEvent>
#include <QListWidget>
#include <QRadioButton>
#include <QSignalBlocker>
#include <QTreeView>
#include <QWheelEvent>
#include <algorithm>

#include "controls/ControlWidgets.h"
#include "controls/QtText.h"
#include "dialogs/PickList.h"
#include "values/Utf8.h"

namespace vlm::ui {

namespace {

constexpr int kEntriesAtOnce = 20;  // of a drop-down
constexpr int kLeastCharacters = 8;
constexpr std::size_t kShortItem = 6;  // a list of such texts stays narrow
constexpr int kUnitsInAnInch = 1440;
constexpr int kWidestText = 360;  // pixels, of a popup's first column
constexpr int kMargins = 40;      // scroll bar and frame
constexpr int kFewestRows = 2;    // of a list that is always open
constexpr int kMostRows = 6;

QStringList TextsOf(const std::vector<std::string>& items) {
    QStringList texts;
    for (const std::string& item : items) texts << ToQt(item);
    return texts;
}

/// A drop-down list of which also nothing may be chosen: Del takes the choice away. The mouse wheel turns it only while
/// it has the focus, so that scrolling over a form changes nothing.
class DropDown : public QComboBox {
public:
    DropDown() {
        setFocusPolicy(Qt::StrongFocus);
        setMaxVisibleItems(kEntriesAtOnce);
        setMinimumContentsLength(kLeastCharacters);
        setSizeAdjustPolicy(QComboBox::AdjustToContentsOnFirstShow);  // later its row says how wide it is
        connect(this, &QComboBox::activated, [this](int position) { onChosen(position); });
    }

    /// The user chose an entry, also the one that is chosen already; -1 for none.
    std::function<void(int position)> onChosen;

protected:
    void keyPressEvent(QKeyEvent* event) override {
        const bool clears = event->key() == Qt::Key_Delete || event->key() == Qt::Key_Backspace;
        if (!clears) return QComboBox::keyPressEvent(event);
        setCurrentIndex(-1);
        onChosen(-1);
    }
    void wheelEvent(QWheelEvent* event) override { hasFocus() ? QComboBox::wheelEvent(event) : event->ignore(); }
};

class FixedListWidget : public WidgetOf<FixedList, DropDown> {
public:
    FixedListWidget(Control& control, WidgetHost& host) : WidgetOf(control, host, new DropDown) {
        widget_->onChosen = [this](int position) { Host().Act([this, position] { Shown().SetPosition(position); }); };
    }
    void Refresh() override {
        const QSignalBlocker silent(widget_);
        const QStringList texts = TextsOf(Shown().Items());
        QStringList there;
        for (int i = 0; i < widget_->count(); ++i) there << widget_->itemText(i);
        if (texts != there) {
            widget_->clear();
            widget_->addItems(texts);
        }
        widget_->setCurrentIndex(Shown().Position());
    }
    bool Widens() const override {
        const std::vector<std::string>& items = Shown().Items();
        return items.empty() || std::any_of(items.begin(), items.end(),
                                            [](const std::string& item) { return text::Length(item) > kShortItem; });
    }
};

/// The rows of a pick list: its text, and its extra columns beside it. Cells are asked for as they are painted.
class PickListModel : public QAbstractTableModel {
public:
    PickListModel(const PickList& list, QObject* parent) : QAbstractTableModel(parent), list_(list) {}

    int rowCount(const QModelIndex& parent = {}) const override { return parent.isValid() ? 0 : list_.RowCount(); }
    int columnCount(const QModelIndex& parent = {}) const override {
        return parent.isValid() ? 0 : 1 + static_cast<int>(list_.extraColumns.size());
    }
    QVariant data(const QModelIndex& index, int role) const override {
        if (!index.isValid() || role != Qt::DisplayRole) return {};
        if (index.column() == 0) return ToQt(list_.TextAt(index.row()));
        try {
            return ToQt(list_.ColumnAt(index.row(), Extra(index.column()).name));
        } catch (const std::exception&) {
            return {};  // a column that the rows do not have stays empty
        }
    }
    QVariant headerData(int section, Qt::Orientation orientation, int role) const override {
        if (orientation != Qt::Horizontal || role != Qt::DisplayRole) return {};
        return ToQt(section == 0 ? list_.Caption() : Extra(section).caption);
    }
    /// The list's rows are others now.
    void Renew() {
        beginResetModel();
        endResetModel();
    }

private:
    const PickList::ExtraColumn& Extra(int column) const {
        return list_.extraColumns[static_cast<std::size_t>(column) - 1];
    }

    const PickList& list_;
};

class PickListWidget : public WidgetOf<PickList, DropDown> {
public:
    PickListWidget(Control& control, WidgetHost& host)
        : WidgetOf(control, host, new DropDown), model_(new PickListModel(Shown(), widget_)) {
        widget_->setModel(model_);
        widget_->onChosen = [this](int index) { Host().Act([this, index] { Shown().SelectIndex(index); }); };
    }
    void Refresh() override {
        const QSignalBlocker silent(widget_);
        if (Shown().extraColumns.size() != columns_) ShowColumns();
        model_->Renew();
        widget_->setCurrentIndex(Shown().SelectedIndex());
    }
    bool Widens() const override { return true; }

private:
    /// A popup with headed columns, once the list has extra ones.
    void ShowColumns() {
        columns_ = Shown().extraColumns.size();
        auto* table = new QTreeView;
        table->setRootIsDecorated(false);
        table->setAllColumnsShowFocus(true);
        table->setUniformRowHeights(true);
        table->setHeaderHidden(columns_ == 0);
        model_->Renew();
        widget_->setView(table);
        table->header()->setStretchLastSection(true);
        table->header()->setSectionResizeMode(0, QHeaderView::ResizeToContents);
        int width = kWidestText + kMargins;
        for (const PickList::ExtraColumn& column : Shown().extraColumns) {
            width += column.width * table->logicalDpiX() / kUnitsInAnInch;
        }
        table->setMinimumWidth(width);
    }

    PickListModel* model_;
    std::size_t columns_ = 0;
};

class MultiListWidget : public WidgetOf<MultiList, QListWidget> {
public:
    MultiListWidget(Control& control, WidgetHost& host) : WidgetOf(control, host, new QListWidget) {
        widget_->setSelectionMode(QAbstractItemView::MultiSelection);
        widget_->setTabKeyNavigation(false);
        widget_->setUniformItemSizes(true);
        QObject::connect(widget_, &QListWidget::itemSelectionChanged, [this] { Choose(); });
    }
    void Refresh() override {
        const QSignalBlocker silent(widget_);
        Fill();
        for (int row = 0; row < widget_->count(); ++row) widget_->item(row)->setSelected(Shown().IsSelected(row));
    }
    bool Widens() const override { return true; }

private:
    void Fill() {
        const QStringList texts = TextsOf(Shown().Items());
        QStringList there;
        for (int row = 0; row < widget_->count(); ++row) there << widget_->item(row)->text();
        if (texts == there) return;
        widget_->clear();
        widget_->addItems(texts);
        const int rows = std::clamp(widget_->count(), kFewestRows, kMostRows);
        const int rowHeight = widget_->count() > 0 ? widget_->sizeHintForRow(0) : widget_->fontMetrics().height();
        widget_->setFixedHeight(rows * rowHeight + 2 * widget_->frameWidth() + 2);
    }

    void Choose() {
        std::set<int> positions;
        for (int row = 0; row < widget_->count(); ++row) {
            if (widget_->item(row)->isSelected()) positions.insert(row);
        }
        Host().Act([this, &positions] { Shown().SetSelected(positions); });
    }
};

class OptionsWidget : public WidgetOf<OptionGroup, QWidget> {
public:
    OptionsWidget(Control& control, WidgetHost& host)
        : WidgetOf(control, host, new QWidget), layout_(new QHBoxLayout(widget_)), buttons_(new QButtonGroup(widget_)) {
        layout_->setContentsMargins(0, 0, 0, 0);
        layout_->setSpacing(2 * widget_->fontMetrics().horizontalAdvance('m'));
        QObject::connect(buttons_, &QButtonGroup::idClicked,
                         [this](int position) { Host().Act([this, position] { Shown().SetPosition(position); }); });
    }
    void Refresh() override {
        const QSignalBlocker silent(buttons_);
        Fill();
        const int position = Shown().Position();
        buttons_->setExclusive(position >= 0);  // an exclusive group cannot be without a choice again
        for (QAbstractButton* option : buttons_->buttons()) option->setChecked(buttons_->id(option) == position);
        buttons_->setExclusive(true);
    }
    std::vector<QWidget*> FocusStops() override {
        const QList<QAbstractButton*> options = buttons_->buttons();
        return {options.begin(), options.end()};
    }
    void TakeFocus() override {
        QAbstractButton* chosen = buttons_->checkedButton();
        if (chosen != nullptr) return chosen->setFocus(Qt::OtherFocusReason);
        ControlWidget::TakeFocus();
    }

private:
    /// An option more or less is made or taken away; those that are there get their texts.
    void Fill() {
        const QStringList texts = TextsOf(Shown().Items());
        while (buttons_->buttons().size() > texts.size()) delete buttons_->buttons().last();
        for (int i = 0; i < texts.size(); ++i) {
            if (buttons_->button(i) == nullptr) {
                auto* option = new QRadioButton(widget_);
                buttons_->addButton(option, i);
                layout_->addWidget(option);
            }
            buttons_->button(i)->setText(texts[i]);
        }
    }

    QHBoxLayout* layout_;
    QButtonGroup* buttons_;
};

}  // namespace

std::unique_ptr<ControlWidget> MakeFixedList(Control& control, WidgetHost& host) {
    return std::make_unique<FixedListWidget>(control, host);
}

std::unique_ptr<ControlWidget> MakePickList(Control& control, WidgetHost& host) {
    return std::make_unique<PickListWidget>(control, host);
}

std::unique_ptr<ControlWidget> MakeMultiList(Control& control, WidgetHost& host) {
    return std::make_unique<MultiListWidget>(control, host);
}

std::unique_ptr<ControlWidget> MakeOptions(Control& control, WidgetHost& host) {
    return std::make_unique<OptionsWidget>(control, host);
}

}  // namespace vlm::ui
