#pragma once

#include <functional>
#include <string>
#include <vector>

#include "dialogs/Toolkit.h"
#include "system/SettingsStore.h"

class QWidget;

namespace vlm::ui {

class ControlWidget;
class QtDialog;

/// Shows dialogs in windows of the desktop and asks people. A QtApplication must live as long.
class QtToolkit : public Toolkit {
public:
    /// `settings` keeps the sizes of the windows and outlives the toolkit.
    explicit QtToolkit(sys::SettingsStore& settings);

    void ShowModal(Dialog& dialog) override;
    Answer Show(const Message& message) override;
    std::optional<std::string> ChooseFile(const FileChoice& choice) override;
    std::optional<std::string> ChooseFolder(const std::string& startFolder) override;
    void SetPointer(Pointer pointer) override;
    /// Writes a file in the form that printers take and shows it; the user names it.
    bool Print(const Grid& grid, const std::string& title) override;

    /// Shows what was printed; the desktop's own program unless set otherwise.
    std::function<void(const std::string& path)> onPrinted;

    /// The window on top, null for none.
    QWidget* TopWindow() const;
    /// The widget of a control in the dialog on top; null when it has none. For tests.
    ControlWidget* Find(const Control& control) const;

private:
    /// The normal pointer while the user is asked, whatever goes on.
    class PointerLift;

    sys::SettingsStore& settings_;
    std::vector<QtDialog*> shown_;
};

}  // namespace vlm::ui
