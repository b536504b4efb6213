#pragma once

#include <functional>
#include <optional>
#include <set>
#include <string>
#include <string_view>
#include <vector>

#include "values/Date.h"

namespace vlm::ui {

class Dialog;

enum class ControlKind {
    Label,
    Frame,
    Button,
    Text,
    Number,
    Date,
    CheckBox,
    OptionGroup,
    FixedList,
    PickList,
    MultiList,
    Progress,
    Grid
};

/// A named part of a dialog: its state and its events, without any toolkit. A control belongs to the dialog that it is
/// a member of and registers itself there. Setting a state tells the shown dialog's view; setting another value runs
/// `OnChange`, whoever sets it, as the controls of the old frame did. Setting the value that is there does nothing,
/// except where a control says otherwise.
class Control {
public:
    Control(Dialog& dialog, ControlKind kind, std::string name, std::string caption = {});
    virtual ~Control() = default;
    Control(const Control&) = delete;
    Control& operator=(const Control&) = delete;

    ControlKind Kind() const noexcept { return kind_; }
    const std::string& Name() const noexcept { return name_; }
    /// With "&" before the mnemonic letter, where it has one.
    const std::string& Caption() const noexcept { return caption_; }
    void SetCaption(std::string caption);
    bool Enabled() const noexcept { return enabled_; }
    void SetEnabled(bool enabled);
    bool Visible() const noexcept { return visible_; }
    void SetVisible(bool visible);
    void SetFocus();
    Dialog& Owner() const noexcept { return dialog_; }
    /// The caption stands in the control itself; other kinds have it beside them.
    bool HoldsCaption() const noexcept;
    /// What the user sees in the control: the chosen entries, a number (nothing for 0), a date as dd/mm/yyyy, the text;
    /// "1" or "0" for a check box, the caption for a label, "" for buttons, frames and grids.
    virtual std::string ShownText() const { return {}; }

    /// The value changed (buttons: the button was clicked).
    std::function<void()> OnChange;

protected:
    void Changed(bool runHandler);

private:
    Dialog& dialog_;
    ControlKind kind_;
    std::string name_;
    std::string caption_;
    bool enabled_ = true;
    bool visible_ = true;
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

class Label : public Control {
public:
    Label(Dialog& dialog, std::string name, std::string caption = {})
        : Control(dialog, ControlKind::Label, std::move(name), std::move(caption)) {}
    std::string ShownText() const override { return Caption(); }
};

/// A titled border around other controls.
class Frame : public Control {
public:
    Frame(Dialog& dialog, std::string name, std::string caption = {})
        : Control(dialog, ControlKind::Frame, std::move(name), std::move(caption)) {}
};

class Button : public Control {
public:
    Button(Dialog& dialog, std::string name, std::string caption)
        : Control(dialog, ControlKind::Button, std::move(name), std::move(caption)) {}
    void Click() { Changed(true); }
};

class TextField : public Control {
public:
    TextField(Dialog& dialog, std::string name, std::string caption = {})
        : Control(dialog, ControlKind::Text, std::move(name), std::move(caption)) {}
    const std::string& Text() const noexcept { return text_; }
    void SetText(std::string text);
    /// "set" for a password that is not empty: what is typed there goes nowhere, not even its length.
    std::string ShownText() const override;
    bool multiLine = false;  // lines are parted by carriage return and line feed
    bool password = false;
    bool path = false;  // names a file or folder; toolkits may help with it

private:
    std::string text_;
};

/// A number between two bounds. A value outside them is not taken.
class NumberField : public Control {
public:
    NumberField(Dialog& dialog, std::string name, std::string caption, double minimum, double maximum, int decimals = 0)
        : Control(dialog, ControlKind::Number, std::move(name), std::move(caption)),
          minimum_(minimum),
          maximum_(maximum),
          decimals_(decimals) {}
    double Value() const noexcept { return value_; }
    /// False, and nothing changes, when the value is out of bounds or has more decimals than the field. 0 empties the
    /// field whatever its bounds are.
    bool SetValue(double value);
    double Minimum() const noexcept { return minimum_; }
    double Maximum() const noexcept { return maximum_; }
    int Decimals() const noexcept { return decimals_; }
    std::string ShownText() const override;

private:
    double minimum_, maximum_;
    int decimals_;
    double value_ = 0;
};

class DateField : public Control {
public:
    DateField(Dialog& dialog, std::string name, std::string caption = {})
        : Control(dialog, ControlKind::Date, std::move(name), std::move(caption)) {}
    const std::optional<vlm::Date>& Value() const noexcept { return value_; }
    void SetValue(std::optional<vlm::Date> value);
    std::string ShownText() const override;

private:
    std::optional<vlm::Date> value_;
};

class CheckBox : public Control {
public:
    CheckBox(Dialog& dialog, std::string name, std::string caption)
        : Control(dialog, ControlKind::CheckBox, std::move(name), std::move(caption)) {}
    bool Checked() const noexcept { return checked_; }
    void SetChecked(bool checked);
    std::string ShownText() const override { return checked_ ? "1" : "0"; }

private:
    bool checked_ = false;
};

/// Texts in fixed order, none or one chosen: the options of a group or the entries of a drop-down list.
/// Choosing runs OnChange also when the position stays the same, as a click does.
class ChoiceControl : public Control {
public:
    using Control::Control;
    const std::vector<std::string>& Items() const noexcept { return items_; }
    /// Replaces the texts; nothing is chosen afterwards. Runs no handler.
    void SetItems(std::vector<std::string> items);
    int Position() const noexcept { return position_; }  // from 0, -1 for none
    void SetPosition(int position);                      // a position that is not there chooses nothing
    std::string SelectedText() const;
    std::string ShownText() const override { return SelectedText(); }

private:
    std::vector<std::string> items_;
    int position_ = -1;
};

class OptionGroup : public ChoiceControl {
public:
    OptionGroup(Dialog& dialog, std::string name, std::vector<std::string> options)
        : ChoiceControl(dialog, ControlKind::OptionGroup, std::move(name)) {
        SetItems(std::move(options));
    }
};

class FixedList : public ChoiceControl {
public:
    FixedList(Dialog& dialog, std::string name, std::string caption = {})
        : ChoiceControl(dialog, ControlKind::FixedList, std::move(name), std::move(caption)) {}
};

/// A list of fixed texts of which any number may be chosen.
class MultiList : public Control {
public:
    MultiList(Dialog& dialog, std::string name, std::string caption = {})
        : Control(dialog, ControlKind::MultiList, std::move(name), std::move(caption)) {}
    const std::vector<std::string>& Items() const noexcept { return items_; }
    void SetItems(std::vector<std::string> items);  // nothing is chosen afterwards
    const std::set<int>& Selected() const noexcept { return selected_; }
    bool IsSelected(int position) const { return selected_.count(position) != 0; }
    /// Positions that are not there are left out.
    void SetSelected(std::set<int> positions);
    std::string ShownText() const override;

private:
    std::vector<std::string> items_;
    std::set<int> selected_;
};

/// 0 to 100; a value outside is taken as the nearer end.
class ProgressBar : public Control {
public:
    ProgressBar(Dialog& dialog, std::string name) : Control(dialog, ControlKind::Progress, std::move(name)) {}
    int Value() const noexcept { return value_; }
    /// Repaints at once: the thread that works is the one that paints.
    void SetValue(int value);
    std::string ShownText() const override { return std::to_string(value_); }

private:
    int value_ = 0;
};

}  // namespace vlm::ui
