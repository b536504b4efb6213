#include "platform/ui/Dialog.h"

#include <algorithm>

#include "platform/text/Utf8.h"

namespace vlm::ui {

namespace {

bool ClickIfUsable(Button* button) {
    if (button == nullptr || !button->Visible() || !button->Enabled()) return false;
    button->Click();
    return true;
}

}  // namespace

Control* Dialog::Find(std::string_view name) const {
    const auto found = std::find_if(controls_.begin(), controls_.end(), [name](const Control* control) {
        return text::EqualNoCase(control->Name(), name);
    });
    return found == controls_.end() ? nullptr : *found;
}

bool Dialog::KeyDown(Control* /*focus*/, KeyEvent key) {
    PreviewKey(key);
    if (key.Swallowed() || closing_) return true;
    if (key.code == kKeyF4 && key.shift == kAlt) {
        FrameClose();
        return true;
    }
    if (key.shift != kShiftNone) return false;
    switch (key.code) {
        case kKeyEscape:
            return ClickIfUsable(cancelButton_);
        case kKeyReturn:
            return ClickIfUsable(defaultButton_);
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
