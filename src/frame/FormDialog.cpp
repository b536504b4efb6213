#include "frame/FormDialog.h"

namespace vlm {

namespace {

bool IsClosingKey(const ui::KeyEvent& key) {
    return key.code == ui::kKeyEscape || (key.code == ui::kKeyF4 && (key.shift & ui::kAlt) != 0);
}

void CloseByKey(FormDialog& dialog, ui::KeyEvent& key) {
    if (dialog.CloseToolEnabled()) dialog.FrameClose();
    key.Swallow();
}

}  // namespace

void HandleFormKeyDown(FormDialog& dialog, ui::KeyEvent& key) {
    if (key.code == ui::kKeyF3) {
        key.Swallow();
    } else if (IsClosingKey(key)) {
        CloseByKey(dialog, key);
    } else {
        dialog.FrameKeyDown(key);
    }
}

void FormDialog::FrameKeyDown(ui::KeyEvent& key) {
    if (IsClosingKey(key)) {
        CloseByKey(*this, key);
    } else if (key.code == ui::kKeyF1) {
        HelpRequested();
        key.Swallow();
    }
}

void FormDialog::PreviewKey(ui::KeyEvent& key) {
    switch (preview_) {
        case KeyPreview::None:
            return;
        case KeyPreview::Frame:
            return FrameKeyDown(key);
        case KeyPreview::CommonRule:
            return HandleFormKeyDown(*this, key);
    }
}

void FormDialog::KeyUp(ui::Control* focus, ui::KeyEvent key) {
    if (key.code != ui::kKeyR || (key.shift & ui::kCtrl) == 0) return;
    for (const auto& [field, browse] : browsers_) {
        if (field == focus && field->Enabled()) return browse();
    }
}

void FormDialog::BrowseWith(ui::TextField& field, std::function<void()> browse) {
    field.path = true;
    browsers_.emplace_back(&field, std::move(browse));
}

void FormDialog::Guarded(const std::function<void()>& handler) const {
    try {
        handler();
    } catch (const std::exception& error) {
        messages::ShowError(library_.Toolkit(), error.what());
    }
}

}  // namespace vlm
