#pragma once

#include <gtest/gtest.h>

#include "Win32User.h"
#include "support/SampleDialog.h"

namespace vlm::ui::test {

using Calls = std::vector<std::string>;

/// Windows with settings in memory, and a dialog with a control of every kind to show in them.
class Windows : public testing::Test {
protected:
    using Deeds = std::vector<std::function<void()>>;

    /// Shows the dialog, does each of `deeds` once what the one before brought about is over, and closes the dialog.
    void Show(Dialog& shown, const Deeds& deeds) {
        std::size_t next = 0;
        const Ticks ticks([&] {
            if (shown.IsClosing()) return true;
            if (working || TopWindow() == nullptr) return false;
            next < deeds.size() ? deeds[next]() : shown.Close();
            ++next;
            return false;
        });
        toolkit.ShowModal(shown);
    }
    void Show(const Deeds& deeds) { Show(dialog, deeds); }
    /// The calls of the dialog but for keys that came up, which are forgotten.
    static Calls Runs(SampleDialog& shown) {
        std::erase_if(shown.calls, [](const std::string& call) { return call.starts_with("up:"); });
        return std::exchange(shown.calls, {});
    }

    MemorySettings settings;
    Win32Toolkit toolkit{settings};
    SampleDialog dialog;
    bool working = false;  // nothing is done meanwhile
};

}  // namespace vlm::ui::test
