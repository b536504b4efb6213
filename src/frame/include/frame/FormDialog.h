#pragma once

#include <functional>
#include <string>
#include <utility>
#include <vector>

#include "dialogs/Dialog.h"
#include "frame/Library.h"
#include "frame/Messages.h"

namespace vlm {

/// What every dialog of the library does alike, on the host's frame: who sees a key first, the browse key of path
/// fields, and errors of an event handler told to the user instead of ending the host.
class FormDialog : public ui::Dialog {
public:
    /// Who sees a key before the control does.
    enum class KeyPreview {
        None,       // nobody: viewer, import and PIN dialog
        Frame,      // the frame's key handling: the export dialogs
        CommonRule  // HandleFormKeyDown: file selection and revocation
    };

    FormDialog(const Library& library, std::string name, std::string title, KeyPreview preview)
        : Dialog(std::move(name), std::move(title)), library_(library), preview_(preview) {}

    const Library& Lib() const noexcept { return library_; }

    /// The frame's close tool "CLOSE".
    bool CloseToolEnabled() const noexcept { return closeToolEnabled_; }
    void SetCloseToolEnabled(bool enabled) noexcept { closeToolEnabled_ = enabled; }

    void KeyUp(ui::Control* focus, ui::KeyEvent key) override;
    /// The frame's own key handling: Escape and Alt+F4 close through the close tool, F1 asks for help.
    void FrameKeyDown(ui::KeyEvent& key);

protected:
    void PreviewKey(ui::KeyEvent& key) override;

    /// `field` names a file or folder; Ctrl+R released in it does what its browse button does.
    void BrowseWith(ui::TextField& field, std::function<void()> browse);
    /// Runs an event handler; an error is shown, and the dialog stays as it is.
    void Guarded(const std::function<void()>& handler) const;

private:
    const Library& library_;
    KeyPreview preview_;
    bool closeToolEnabled_ = true;
    std::vector<std::pair<ui::TextField*, std::function<void()>>> browsers_;
};

/// Shows a fresh dialog of a component and comes back when it has closed; an error is told to the user.
template <class Form, class Component>
void ShowForm(Component& component) {
    ui::Toolkit& toolkit = component.Lib().Toolkit();
    try {
        Form dialog(component);
        toolkit.ShowModal(dialog);
    } catch (const std::exception& error) {
        messages::ShowError(toolkit, error.what());
    }
}

/// F3 is swallowed; Escape and Alt+F4 close the dialog when its frame's close tool is enabled; any other key goes on to
/// the frame's key handling.
void HandleFormKeyDown(FormDialog& dialog, ui::KeyEvent& key);

}  // namespace vlm
