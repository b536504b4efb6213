#include "dialogs/Control.h"

#include <algorithm>
#include <cmath>

#include "dialogs/Dialog.h"
#include "values/DateText.h"
#include "values/Number.h"

namespace vlm::ui {

namespace {

bool IsPosition(int position, std::size_t count) { return position >= 0 && static_cast<std::size_t>(position) < count; }

/// Tells 12.345 from 12.34 in a field of two decimals; the tolerance is what a binary fraction loses on the way.
bool HasMoreDecimals(double value, int decimals) {
    const double scaled = value * std::pow(10.0, decimals);
    return std::abs(scaled - std::round(scaled)) > 1e-12 * std::max(1.0, std::abs(scaled));
}

}  // namespace

Control::Control(Dialog& dialog, ControlKind kind, std::string name, std::string caption)
    : dialog_(dialog), kind_(kind), name_(std::move(name)), caption_(std::move(caption)) {
    dialog_.Register(*this);
}

void Control::SetCaption(std::string caption) {
    if (caption == caption_) return;
    caption_ = std::move(caption);
    Changed(false);
}

void Control::SetEnabled(bool enabled) {
    if (enabled == enabled_) return;
    enabled_ = enabled;
    Changed(false);
}

void Control::SetVisible(bool visible) {
    if (visible == visible_) return;
    visible_ = visible;
    Changed(false);
}

bool Control::HoldsCaption() const noexcept {
    return kind_ == ControlKind::Label || kind_ == ControlKind::Frame || kind_ == ControlKind::Button ||
           kind_ == ControlKind::CheckBox;
}

void Control::SetFocus() { dialog_.NotifyFocus(*this); }

void Control::Changed(bool runHandler) {
    dialog_.NotifyChanged(*this);
    if (runHandler && OnChange) OnChange();
}

void TextField::SetText(std::string text) {
    if (text == text_) return;
    text_ = std::move(text);
    Changed(true);
}

std::string TextField::ShownText() const { return !password ? text_ : text_.empty() ? "" : "set"; }

bool NumberField::SetValue(double value) {
    const bool outside = !(value >= minimum_ && value <= maximum_);  // also what is not a number
    if (value != 0 && (outside || HasMoreDecimals(value, decimals_))) return false;
    if (value == value_) return true;
    value_ = value;
    Changed(true);
    return true;
}

std::string NumberField::ShownText() const {
    if (value_ == 0) return {};  // an empty field
    return text::FormatDecimals(Currency::FromDouble(value_), decimals_, false);
}

void DateField::SetValue(std::optional<vlm::Date> value) {
    if (value == value_) return;
    value_ = value;
    Changed(true);
}

std::string DateField::ShownText() const { return value_ ? text::DdMmYyyySlashes(*value_) : std::string(); }

void CheckBox::SetChecked(bool checked) {
    if (checked == checked_) return;
    checked_ = checked;
    Changed(true);
}

void ChoiceControl::SetItems(std::vector<std::string> items) {
    items_ = std::move(items);
    position_ = -1;
    Changed(false);
}

void ChoiceControl::SetPosition(int position) {
    position_ = IsPosition(position, items_.size()) ? position : -1;
    Changed(true);
}

std::string ChoiceControl::SelectedText() const {
    return position_ < 0 ? std::string() : items_[static_cast<std::size_t>(position_)];
}

void MultiList::SetItems(std::vector<std::string> items) {
    items_ = std::move(items);
    selected_.clear();
    Changed(false);
}

void MultiList::SetSelected(std::set<int> positions) {
    std::erase_if(positions, [this](int position) { return !IsPosition(position, items_.size()); });
    if (positions == selected_) return;
    selected_ = std::move(positions);
    Changed(true);
}

std::string MultiList::ShownText() const {
    std::string shown;
    for (const int position : selected_) {
        shown += (shown.empty() ? "" : ", ") + items_[static_cast<std::size_t>(position)];
    }
    return shown;
}

void ProgressBar::SetValue(int value) {
    value = std::clamp(value, 0, 100);
    if (value == value_) return;
    value_ = value;
    Changed(true);
    Owner().Repaint();
}

}  // namespace vlm::ui
