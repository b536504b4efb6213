#pragma once

#include <QSize>
#include <optional>
#include <string>

#include "system/SettingsStore.h"

namespace vlm::ui {

/// The sizes that the user gave the windows, kept from one showing to the next under "Window.NAME" as
/// "WIDTHxHEIGHT" in pixels at 96 dots an inch. A store that fails forgets.
class WindowSizes {
public:
    explicit WindowSizes(sys::SettingsStore& settings) : settings_(settings) {}

    /// Nothing when none was kept or what stands there is no size.
    std::optional<QSize> SizeOf(const std::string& window) const;
    void Keep(const std::string& window, QSize size);

private:
    sys::SettingsStore& settings_;
};

}  // namespace vlm::ui
