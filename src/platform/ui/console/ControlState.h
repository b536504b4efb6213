#pragma once

#include <string>
#include <vector>

#include "platform/ui/Control.h"
#include "platform/ui/console/JsonWriter.h"

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

    /// What the user sees in the control: the chosen entries, a number, a date as dd/mm/yyyy, the text; "1" or "0" for
    /// a check box, the caption for a label, "" for buttons, frames and grids.
    std::string Text() const;
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

/// A control seen as what its kind says it is.
template <typename T>
const T& As(const Control& control) {
    return static_cast<const T&>(control);
}
template <typename T>
T& As(Control& control) {
    return static_cast<T&>(control);
}

}  // namespace vlm::ui
