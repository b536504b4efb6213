#include "controls/OptionsWidget.h"

#include <QRadioButton>
#include <QSignalBlocker>

#include "controls/QtText.h"

namespace vlm::ui {

OptionsWidget::OptionsWidget(OptionGroup& group, WidgetHost& host)
    : ControlWidget(group, host), row_(new QWidget), layout_(new QHBoxLayout(row_)), buttons_(new QButtonGroup(row_)) {
    layout_->setContentsMargins(0, 0, 0, 0);
    layout_->setSpacing(2 * row_->fontMetrics().horizontalAdvance('m'));
    QObject::connect(buttons_, &QButtonGroup::idClicked, [this](int position) {
        Host().Act([this, position] { As<OptionGroup>(Shown()).SetPosition(position); });
    });
    Fill();
}

/// An option more or less is made or taken away; those that are there get their texts.
void OptionsWidget::Fill() {
    const std::vector<std::string>& items = As<OptionGroup>(Shown()).Items();
    const auto count = [this] { return static_cast<std::size_t>(buttons_->buttons().size()); };
    while (count() > items.size()) delete buttons_->buttons().last();
    while (count() < items.size()) {
        auto* option = new QRadioButton(row_);
        buttons_->addButton(option, static_cast<int>(count()));
        layout_->addWidget(option);
    }
    for (std::size_t i = 0; i < items.size(); ++i) buttons_->button(static_cast<int>(i))->setText(ToQt(items[i]));
}

void OptionsWidget::Refresh() {
    const QSignalBlocker silent(buttons_);
    Fill();
    const int position = As<OptionGroup>(Shown()).Position();
    buttons_->setExclusive(position >= 0);  // an exclusive group cannot be without a choice again
    for (QAbstractButton* option : buttons_->buttons()) option->setChecked(buttons_->id(option) == position);
    buttons_->setExclusive(true);
}

std::vector<QWidget*> OptionsWidget::FocusStops() {
    const QList<QAbstractButton*> options = buttons_->buttons();
    return {options.begin(), options.end()};
}

void OptionsWidget::TakeFocus() {
    QAbstractButton* chosen = buttons_->checkedButton();
    if (chosen != nullptr) return chosen->setFocus(Qt::OtherFocusReason);
    ControlWidget::TakeFocus();
}

}  // namespace vlm::ui
