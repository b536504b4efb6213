#include "FormLayout.h"

#include <algorithm>

#include "dialogs/Keys.h"

namespace vlm::ui {

namespace {

constexpr int kMargin = 11;  // pixels at 96 dots an inch, as are the next ones
constexpr int kBetween = 7;
constexpr int kFrameMargin = 10;
constexpr int kAboveButtons = 10;
constexpr int kNarrowestButton = 88;

bool AnyOf(const Dialog::Row& row, bool (Control::*state)() const noexcept) {
    return std::any_of(row.cells.begin(), row.cells.end(), [state](const Dialog::Cell& cell) {
        return std::any_of(cell.stack.begin(), cell.stack.end(),
                           [state](const Control* each) { return each->Visible() && (each->*state)(); });
    });
}

void ShowWindowState(HWND window, bool visible, bool enabled) {
    EnableWindow(window, enabled);
    ShowWindow(window, visible ? SW_SHOWNA : SW_HIDE);
}

}  // namespace

FormLayout::FormLayout(const Dialog& dialog, WindowHost& host) : dialog_(dialog), host_(host) {
    Sort();
    for (Control* control : dialog.Controls()) Create(*control);
    for (Block& block : blocks_) {
        for (Line& line : block.lines) {
            for (std::size_t i = 0; i < line.cells.size(); ++i) {
                for (Control* control : line.row->cells[i].stack) {
                    line.cells[i].push_back({Find(*control), captions_[control]});
                }
            }
        }
    }
    AlignButtons();
    for (const Control* control : dialog.Controls()) ShowState(*control);
    ShowLabels();
}

/// Rows of one frame stand together where its first one does.
void FormLayout::Sort() {
    for (const Dialog::Row& row : dialog_.Rows()) {
        auto block = row.frame != nullptr ? std::find_if(blocks_.begin(), blocks_.end(),
                                                         [&row](const Block& each) { return each.frame == row.frame; })
                                          : blocks_.end();
        if (row.frame == nullptr && !blocks_.empty() && blocks_.back().frame == nullptr) block = blocks_.end() - 1;
        if (block == blocks_.end()) block = blocks_.insert(block, {row.frame, {}});
        block->lines.push_back({&row, std::vector<std::vector<Part>>(row.cells.size())});
    }
}

FormLayout::Line* FormLayout::LineOf(const Control& control, std::size_t& cell) {
    for (Block& block : blocks_) {
        for (Line& line : block.lines) {
            for (cell = 0; cell < line.row->cells.size(); ++cell) {
                const std::vector<Control*>& stack = line.row->cells[cell].stack;
                if (std::find(stack.begin(), stack.end(), &control) != stack.end()) return &line;
            }
        }
    }
    return nullptr;
}

/// A field is called by the text that stands before it in tab order: by its label, its own caption, or else by a text
/// that is not shown.
void FormLayout::Create(Control& control) {
    std::size_t cell = 0;
    Line* line = LineOf(control, cell);
    const bool surrounds =
        std::any_of(blocks_.begin(), blocks_.end(), [&control](const Block& each) { return each.frame == &control; });
    const auto& buttons = dialog_.Buttons();
    const bool isButton = std::find(buttons.begin(), buttons.end(), &control) != buttons.end();
    if (line == nullptr && !surrounds && !isButton) return;
    bool named = control.HoldsCaption() || control.Kind() == ControlKind::OptionGroup;
    if (line != nullptr && cell == 0 && line->label == nullptr && !line->row->label.empty()) {
        line->label = MakeLabel(line->row->label, true);
        named = true;
    }
    const bool captioned = line != nullptr && !control.HoldsCaption() && !control.Caption().empty() &&
                           control.Caption() != line->row->label;
    if (captioned) captions_[&control] = MakeLabel(control.Caption(), true);
    if (!named && !captioned) {
        const std::string& label = line != nullptr ? line->row->label : control.Caption();
        MakeLabel(WithoutMnemonic(label.empty() ? dialog_.Title() : label), false);
    }
    windows_[&control] = MakeControlWindow(control, host_, surrounds);
    inTabOrder_.push_back(windows_[&control].get());
}

HWND FormLayout::MakeLabel(const std::string& text, bool visible) {
    const HWND label =
        CreateWindowExW(0, WC_STATICW, Wide(text).c_str(), WS_CHILD | WS_GROUP | (visible ? WS_VISIBLE : 0U), 0, 0, 0,
                        0, host_.Parent(), nullptr, OwnModule(), nullptr);
    SendMessageW(label, WM_SETFONT, reinterpret_cast<WPARAM>(host_.Looks().Font()), FALSE);
    labels_.push_back(label);
    return label;
}

/// Buttons that begin the rows of one block are equally wide, so that what follows stands in line; so are the
/// dialog's own.
void FormLayout::AlignButtons() {
    leastWidths_.clear();
    const auto widest = [this](const std::vector<const Control*>& column, LONG width) {
        for (const Control* button : column) width = std::max(width, Find(*button)->Natural().cx);
        for (const Control* button : column) leastWidths_[button] = width;
    };
    for (const Block& block : blocks_) {
        std::vector<const Control*> column;
        for (const Line& line : block.lines) {
            const Control* first = line.row->cells.front().stack.front();
            if (first->Kind() == ControlKind::Button && line.cells.size() > 1) column.push_back(first);
        }
        widest(column, 0);
    }
    widest({dialog_.Buttons().begin(), dialog_.Buttons().end()}, host_.Looks().Pixels(kNarrowestButton));
}

ControlWindow* FormLayout::Find(const Control& control) const {
    const auto found = windows_.find(&control);
    return found == windows_.end() ? nullptr : found->second.get();
}

void FormLayout::ShowState(const Control& control) {
    ControlWindow* const window = Find(control);
    if (window == nullptr) return;
    const bool visible = dialog_.IsVisible(control);
    const bool enabled = dialog_.IsEnabled(control);
    window->ShowState(visible, enabled);
    const auto caption = captions_.find(&control);
    if (caption != captions_.end() && caption->second != nullptr) ShowWindowState(caption->second, visible, enabled);
}

void FormLayout::ShowLabels() {
    for (const Block& block : blocks_) {
        const bool visible = block.frame == nullptr || block.frame->Visible();
        const bool enabled = block.frame == nullptr || block.frame->Enabled();
        for (const Line& line : block.lines) {
            if (line.label == nullptr) continue;
            ShowWindowState(line.label, visible && AnyOf(*line.row, &Control::Visible),
                            enabled && AnyOf(*line.row, &Control::Enabled));
        }
    }
}

bool FormLayout::Follow(const Control& control) {
    ControlWindow* const window = Find(control);
    if (window == nullptr) return false;
    const SIZE before = Wanted(false);
    const SIZE own = window->Natural();
    const bool visible = IsWindowVisible(window->Windows().empty() ? nullptr : window->Windows().front()) != FALSE;
    window->Refresh();
    if (control.Kind() == ControlKind::Frame) {
        for (const Control* each : dialog_.Controls()) ShowState(*each);
    }
    ShowState(control);
    ShowLabels();
    const SIZE after = Wanted(false);
    const SIZE now = window->Natural();
    return before.cx != after.cx || before.cy != after.cy || own.cx != now.cx || own.cy != now.cy ||
           visible != dialog_.IsVisible(control);
}

void FormLayout::Rescale() {
    for (ControlWindow* window : inTabOrder_) window->Rescale();
    for (const HWND label : labels_) {
        SendMessageW(label, WM_SETFONT, reinterpret_cast<WPARAM>(host_.Looks().Font()), TRUE);
    }
    AlignButtons();
}

// What the parts need.

int FormLayout::Gap() const { return host_.Looks().Pixels(kBetween); }

bool FormLayout::HasLabels(const Frame* frame) const {
    return std::any_of(dialog_.Rows().begin(), dialog_.Rows().end(),
                       [frame](const Dialog::Row& row) { return row.frame == frame && !row.label.empty(); });
}

bool FormLayout::IsBordered(const Block& block) { return block.frame != nullptr && !block.frame->Caption().empty(); }

int FormLayout::Indent(const Block& block) const { return IsBordered(block) ? host_.Looks().Pixels(kFrameMargin) : 0; }

/// Labels inside borders and outside them end at one line: the fields stand under each other.
int FormLayout::LabelWidth() const {
    LONG width = 0;
    for (const Block& block : blocks_) {
        for (const Line& line : block.lines) {
            const LONG label = host_.Looks().Measure(Wide(line.row->label), true).cx;
            if (label > 0) width = std::max(width, label + Indent(block) + Gap());
        }
    }
    return width;
}

int FormLayout::FieldsAt(const Block& block, const Line& line) const {
    const bool across =
        line.row->label.empty() && (Heightens(line) || !HasLabels(block.frame) ||
                                    line.cells.front().front().window->Shown().Kind() == ControlKind::Frame);
    return across ? 0 : LabelWidth() - Indent(block);
}

/// What is hidden keeps its room, so that nothing jumps when it comes back; a grid leaves its room to the next one, a
/// button to the field beside it.
bool FormLayout::TakesRoom(const Part& part) const {
    const Control& control = part.window->Shown();
    const bool leaves = control.Kind() == ControlKind::Grid || control.Kind() == ControlKind::Button;
    return control.Visible() || !leaves;
}

bool FormLayout::TakesRoom(const Line& line) const {
    return std::any_of(line.cells.begin(), line.cells.end(), [this](const std::vector<Part>& cell) {
        return std::any_of(cell.begin(), cell.end(), [this](const Part& part) { return TakesRoom(part); });
    });
}

bool FormLayout::TakesRoom(const Block& block) const {
    if (block.frame != nullptr && !block.frame->Visible()) return false;
    return std::any_of(block.lines.begin(), block.lines.end(), [this](const Line& line) { return TakesRoom(line); });
}

bool FormLayout::Heightens(const Line& line) const {
    return std::any_of(line.cells.begin(), line.cells.end(), [](const std::vector<Part>& cell) {
        return std::any_of(cell.begin(), cell.end(), [](const Part& part) { return part.window->Heightens(); });
    });
}

bool FormLayout::Widens(const std::vector<Part>& cell) {
    return std::any_of(cell.begin(), cell.end(), [](const Part& part) { return part.window->Widens(); });
}

SIZE FormLayout::SizeOf(const Part& part, bool least) const {
    if (!TakesRoom(part)) return {0, 0};
    SIZE size = least ? part.window->Least() : part.window->Natural();
    const auto aligned = leastWidths_.find(&part.window->Shown());
    if (aligned != leastWidths_.end()) size.cx = std::max(size.cx, aligned->second);
    if (part.caption != nullptr) {
        size.cx += host_.Looks().Measure(Wide(part.window->Shown().Caption()), true).cx + Gap();
    }
    return size;
}

SIZE FormLayout::SizeOf(const std::vector<Part>& cell, bool least) const {
    SIZE size{0, 0};
    for (const Part& part : cell) {
        const SIZE each = SizeOf(part, least);
        size = {std::max(size.cx, each.cx), std::max(size.cy, each.cy)};
    }
    return size;
}

SIZE FormLayout::SizeOf(const Line& line, bool least) const {
    if (!TakesRoom(line)) return {0, 0};
    SIZE size{-Gap(), 0};
    for (const std::vector<Part>& cell : line.cells) {
        const SIZE each = SizeOf(cell, least);
        if (each.cx > 0) size.cx += each.cx + Gap();
        size.cy = std::max(size.cy, each.cy);
    }
    if (line.label != nullptr) size.cy = std::max<LONG>(size.cy, host_.Looks().LineHeight());
    return size;
}

SIZE FormLayout::SizeOf(const Block& block, bool least) const {
    if (!TakesRoom(block)) return {0, 0};
    SIZE size{0, -Gap()};
    for (const Line& line : block.lines) {
        if (!TakesRoom(line)) continue;
        const SIZE each = SizeOf(line, least);
        size = {std::max(size.cx, each.cx + FieldsAt(block, line)), size.cy + each.cy + Gap()};
    }
    const int margin = Indent(block);
    if (margin > 0) size = {size.cx + 2 * margin, size.cy + 2 * margin + host_.Looks().LineHeight()};
    return size;
}

SIZE FormLayout::SizeOfButtons() const {
    SIZE size{0, 0};
    for (const Button* button : dialog_.Buttons()) {
        if (!button->Visible()) continue;
        size.cx += leastWidths_.at(button) + (size.cx > 0 ? Gap() : 0);
        size.cy = std::max(size.cy, Find(*button)->Natural().cy);
    }
    return size;
}

SIZE FormLayout::Wanted(bool least) const {
    SIZE size{0, 0};
    for (const Block& block : blocks_) {
        const SIZE each = SizeOf(block, least);
        if (TakesRoom(block)) size = {std::max(size.cx, each.cx), size.cy + each.cy + Gap()};
    }
    const SIZE buttons = SizeOfButtons();
    const int margins = 2 * host_.Looks().Pixels(kMargin);
    return {std::max(size.cx, buttons.cx) + margins,
            size.cy - Gap() + host_.Looks().Pixels(kAboveButtons) + buttons.cy + margins};
}

// Where the parts stand.

void FormLayout::Arrange(SIZE inside) {
    const int margin = host_.Looks().Pixels(kMargin);
    LONG high = 0;
    LONG missing = Natural().cy - inside.cy;  // below nothing when there is room to share
    for (const Block& block : blocks_) {
        if (block.frame != nullptr) continue;
        for (const Line& line : block.lines) high += Heightens(line) && TakesRoom(line) ? 1 : 0;
    }
    const LONG spare = high > 0 ? -missing / high : 0;
    RECT place{margin, margin, inside.cx - margin, 0};
    for (const Block& block : blocks_) {
        if (TakesRoom(block)) place.top = Arrange(block, place, block.frame == nullptr ? spare : 0) + Gap();
    }
    ArrangeButtons(inside);
}

LONG FormLayout::Arrange(const Block& block, RECT place, LONG spare) {
    const int margin = Indent(block);
    if (margin > 0) {
        const RECT border{place.left, place.top, place.right, place.top + SizeOf(block, false).cy};
        Find(*block.frame)->Place(border);
        place = {place.left + margin, place.top + margin / 2 + host_.Looks().LineHeight(), place.right - margin, 0};
    }
    for (const Line& line : block.lines) {
        if (!TakesRoom(line)) continue;
        place.bottom = place.top + SizeOf(line, false).cy + (Heightens(line) ? spare : 0);
        Arrange(block, line, place);
        place.top = place.bottom + Gap();
    }
    return place.top - Gap() + (margin > 0 ? margin + margin / 2 : 0);
}

/// The cells side by side; those that may widen share the room, otherwise it stays at the right.
void FormLayout::Arrange(const Block& block, const Line& line, const RECT& place) {
    const int fields = FieldsAt(block, line);
    if (line.label != nullptr) {
        const int height = host_.Looks().LineHeight();
        const bool tall =
            Heightens(line) || line.cells.front().front().window->Shown().Kind() == ControlKind::MultiList;
        const LONG top = tall ? place.top + host_.Looks().Pixels(3) : (place.top + place.bottom - height) / 2;
        SetWindowPos(line.label, nullptr, place.left, top, fields - Gap() / 2, height, SWP_NOZORDER | SWP_NOACTIVATE);
    }
    LONG spare = place.right - place.left - fields - SizeOf(line, false).cx;
    auto widening = static_cast<LONG>(std::count_if(line.cells.begin(), line.cells.end(), Widens));
    LONG left = place.left + fields;
    for (const std::vector<Part>& cell : line.cells) {
        LONG width = SizeOf(cell, false).cx;
        if (width == 0 && !Widens(cell)) continue;
        if (Widens(cell)) {
            const LONG share = spare / widening--;
            width = std::max(width + share, SizeOf(cell, true).cx);
            spare -= share;
        }
        for (const Part& part : cell) Arrange(part, {left, place.top, left + width, place.bottom});
        left += width + Gap();
    }
}

void FormLayout::Arrange(const Part& part, const RECT& place) {
    RECT own = place;
    const SIZE natural = part.window->Natural();
    if (part.caption != nullptr) {
        const SIZE text = host_.Looks().Measure(Wide(part.window->Shown().Caption()), true);
        SetWindowPos(part.caption, nullptr, own.left, (own.top + own.bottom - text.cy) / 2, text.cx, text.cy,
                     SWP_NOZORDER | SWP_NOACTIVATE);
        own.left += text.cx + Gap();
    }
    if (!part.window->Heightens()) {
        own.top = (place.top + place.bottom - natural.cy) / 2;
        own.bottom = own.top + natural.cy;
    }
    part.window->Place(own);
}

void FormLayout::ArrangeButtons(SIZE inside) {
    const int margin = host_.Looks().Pixels(kMargin);
    const SIZE all = SizeOfButtons();
    LONG left = inside.cx - margin - all.cx;
    for (const Button* button : dialog_.Buttons()) {
        if (!button->Visible()) continue;
        const LONG width = leastWidths_.at(button);
        Find(*button)->Place({left, inside.cy - margin - all.cy, left + width, inside.cy - margin});
        left += width + Gap();
    }
}

}  // namespace vlm::ui
