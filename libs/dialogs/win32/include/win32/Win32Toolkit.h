#pragma once

#include <string>
#include <vector>

#include "dialogs/Toolkit.h"
#include "system/SettingsStore.h"

namespace vlm::ui {

class Win32Dialog;

/// Shows dialogs in windows of the system's own controls and asks people. Each call throws Error where no window can be
/// shown (a service without a desktop) and on a thread of a multi-threaded apartment.
class Win32Toolkit : public Toolkit {
public:
    /// `settings` keeps the sizes of the windows and outlives the toolkit.
    explicit Win32Toolkit(sys::SettingsStore& settings) : settings_(settings) {}

    void ShowModal(Dialog& dialog) override;
    Answer Show(const Message& message) override;
    std::optional<std::string> ChooseFile(const FileChoice& choice) override;
    std::optional<std::string> ChooseFolder(const std::string& startFolder) override;
    void SetPointer(Pointer pointer) override;

private:
    class Asking;

    sys::SettingsStore& settings_;
    std::vector<Win32Dialog*> shown_;
    bool hourglass_ = false;
};

}  // namespace vlm::ui
