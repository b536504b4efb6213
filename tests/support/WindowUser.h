#pragma once

#include <map>
#include <string>
#include <vector>

#include "dialogs/Control.h"
#include "system/SettingsStore.h"

/// What the users of every toolkit's windows have in common.
namespace vlm::ui::test {

struct MemorySettings : sys::SettingsStore {
    std::map<std::string, std::string> values;  // by key
    std::string Get(const std::string&, const std::string&, const std::string& key,
                    const std::string& otherwise) const override {
        const auto at = values.find(key);
        return at == values.end() ? otherwise : at->second;
    }
    void Save(const std::string&, const std::string&, const std::string& key, const std::string& value) override {
        values[key] = value;
    }
};

/// Events without the focus, which a mouse also moves, and the progress, which windows paint.
std::vector<std::string> WithoutFocus(std::vector<std::string> events);

/// Where a list has a step's value: "#2" is a position, "" none; others are an entry's key or its text.
int PositionOf(const Control& list, const std::string& value);

/// What a window should show of a control: of lists the chosen entries and all of them, of grids the current row and
/// the cells.
std::string Held(const Control& control);

/// "a, b of a|b|c"
std::string ChosenOf(const std::vector<std::string>& chosen, const std::vector<std::string>& items);

}  // namespace vlm::ui::test
