#pragma once

#include <string>
#include <vector>

#include "console/JsonWriter.h"
#include "dialogs/ShownText.h"

namespace vlm::ui {

/// What a control holds, read without knowing its kind.
class ControlState {
public:
    /// An entry of a list; `key` is the position, or the row's key of a pick list.
    struct Item {
        int key;
        std::string text;
    };

    explicit ControlState(const Control& control) : control_(control) {}

    std::string Text() const { return ShownText(control_); }
    /// Rows or entries; 0 for a control that has none.
    int Rows() const;
    std::vector<Item> Items() const;

    /// Writes the fields of a state event from "name" on into an open object.
    void Write(JsonWriter& json) const;

private:
    void WriteValue(JsonWriter& json) const;
    void WriteItems(JsonWriter& json) const;
    void WriteGrid(JsonWriter& json) const;

    const Control& control_;
};

}  // namespace vlm::ui
