#pragma once

#include <map>
#include <memory>
#include <vector>

#include "ControlWindow.h"
#include "dialogs/Dialog.h"

namespace vlm::ui {

/// The inside of a dialog's window: its rows as a form, labels before fields, rows of one frame inside its border, the
/// buttons at the bottom right. Fields that may widen take the room; grids and notes also take the height.
class FormLayout {
public:
    FormLayout(const Dialog& dialog, WindowHost& host);

    /// Null for a control that stands nowhere in the dialog.
    ControlWindow* Find(const Control& control) const;
    /// The controls that have windows, in tab order.
    const std::vector<ControlWindow*>& Windows() const noexcept { return inTabOrder_; }
    /// A control's state changed. True when it needs more or less room than before.
    bool Follow(const Control& control);
    /// The inside that shows everything as it is meant, and the smallest.
    SIZE Natural() const { return Wanted(false); }
    SIZE Least() const { return Wanted(true); }
    void Arrange(SIZE inside);
    /// The resolution changed.
    void Rescale();

private:
    /// A control in its place, with its own caption where that tells more than the row's label.
    struct Part {
        ControlWindow* window = nullptr;
        HWND caption = nullptr;
    };
    struct Line {
        const Dialog::Row* row;
        std::vector<std::vector<Part>> cells;
        HWND label = nullptr;
    };
    /// The rows of a frame, or those that follow each other outside.
    struct Block {
        const Frame* frame;
        std::vector<Line> lines;
    };

    void Sort();
    void Create(Control& control);
    Line* LineOf(const Control& control, std::size_t& cell);
    HWND MakeLabel(const std::string& text, bool visible);
    void AlignButtons();

    bool HasLabels(const Frame* frame) const;
    static bool IsBordered(const Block& block);
    int Gap() const;
    int Indent(const Block& block) const;
    int LabelWidth() const;
    int FieldsAt(const Block& block, const Line& line) const;
    SIZE SizeOf(const Part& part, bool least) const;
    SIZE SizeOf(const std::vector<Part>& cell, bool least) const;
    SIZE SizeOf(const Line& line, bool least) const;
    SIZE SizeOf(const Block& block, bool least) const;
    SIZE SizeOfButtons() const;
    SIZE Wanted(bool least) const;
    bool TakesRoom(const Part& part) const;
    bool TakesRoom(const Line& line) const;
    bool TakesRoom(const Block& block) const;
    bool Heightens(const Line& line) const;
    static bool Widens(const std::vector<Part>& cell);

    LONG Arrange(const Block& block, RECT place, LONG spare);
    void Arrange(const Block& block, const Line& line, const RECT& place);
    void Arrange(const Part& part, const RECT& place);
    void ArrangeButtons(SIZE inside);
    void ShowState(const Control& control);
    void ShowLabels();

    const Dialog& dialog_;
    WindowHost& host_;
    std::map<const Control*, std::unique_ptr<ControlWindow>> windows_;
    std::map<const Control*, HWND> captions_;
    std::map<const Control*, LONG> leastWidths_;  // of buttons that stand under each other
    std::vector<ControlWindow*> inTabOrder_;
    std::vector<HWND> labels_;  // all of them, also those that are only read aloud
    std::vector<Block> blocks_;
};

}  // namespace vlm::ui
