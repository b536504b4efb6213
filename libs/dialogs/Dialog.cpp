#include "dialogs/Dialog.h"

#include <algorithm>

#include "values/Utf8.h"

namespace vlm::ui {

namespace {

bool ClickIfUsable(const Dialog& dialog, Button* button) {
    if (button == nullptr || !dialog.IsVisible(*button) || !dialog.IsEnabled(*button)) return false;
    button->Click();
    return true;
}

Button* ButtonOr(Control* focus, Button* otherwise) {
    return focus != nullptr && focus->Kind() == ControlKind::Button ? &As<Button>(*focus) : otherwise;
}

}  // namespace

Control* Dialog::Find(std::string_view name) const {
    const auto found = std::find_if(controls_.begin(), controls_.end(), [name](const Control* control) {
        return text::EqualNoCase(control->Name(), name);
    });
    return found == controls_.end() ? nullptr : *found;
}

const Frame* Dialog::FrameOf(const Control& control) const {
    for (const Row& row : rows_) {
        for (const Cell& cell : row.cells) {
            if (std::find(cell.stack.begin(), cell.stack.end(), &control) != cell.stack.end()) return row.frame;
        }
    }
    return nullptr;
}

bool Dialog::IsVisible(const Control& control) const {
    const Frame* frame = FrameOf(control);
    return control.Visible() && (frame == nullptr || frame->Visible());
}

bool Dialog::IsEnabled(const Control& control) const {
    const Frame* frame = FrameOf(control);
    return control.Enabled() && (frame == nullptr || frame->Enabled());
}

bool Dialog::KeyDown(Control* focus, KeyEvent key) {
    PreviewKey(key);
    if (key.Swallowed() || closing_) return true;
    if (key.code == kKeyF4 && key.shift == kAlt) {
        FrameClose();
        return true;
    }
    if (key.shift != kShiftNone) return false;
    switch (key.code) {
        case kKeyEscape:
            return ClickIfUsable(*this, cancelButton_);
        case kKeyReturn:
            return ClickIfUsable(*this, ButtonOr(focus, defaultButton_));
        case kKeyF1:
            HelpRequested();
            return true;
        default:
            return false;
    }
}

void Dialog::Close() {
    if (closing_) return;
    closing_ = true;
    if (view_ != nullptr) view_->Close();
}

void Dialog::NotifyChanged(Control& control) {
    if (view_ != nullptr) view_->ControlChanged(control);
}

void Dialog::NotifyFocus(Control& control) {
    if (view_ != nullptr) view_->FocusMoved(control);
}

void Dialog::Repaint() {
    if (view_ != nullptr) view_->Repaint();
}

void Dialog::AddRow(std::string label, std::initializer_list<Cell> cells, Frame* frame) {
    rows_.push_back({std::move(label), cells, frame});
}

void Dialog::SetButtons(std::initializer_list<Button*> buttons, Button* defaultButton, Button* cancelButton) {
    buttons_ = buttons;
    defaultButton_ = defaultButton;
    cancelButton_ = cancelButton;
}

}  // namespace vlm::ui
