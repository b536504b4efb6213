#pragma once

#include <windows.h>
// It builds on windows.h.
#include <commctrl.h>
#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "Look.h"
#include "dialogs/Control.h"

namespace vlm::ui {

class ControlWindow;

/// What a control's windows ask of their dialog.
class WindowHost {
public:
    virtual ~WindowHost() = default;
    virtual HWND Parent() const = 0;
    virtual const Look& Looks() const = 0;
    /// Runs what the user's action does to a control. What a handler throws ends the showing and goes through.
    virtual void Act(const std::function<void()>& action) = 0;
    /// A click that a command button of the dialog takes; not while an entry stands in a field that is none.
    virtual void Click(Button& button) = 0;
    /// Calls the control's Settled once what the system is doing with its window is over.
    virtual void Later(ControlWindow& window) = 0;
    /// The number that all windows of a control bear.
    virtual int IdOf(const Control& control) const = 0;
};

/// The system's windows of one control: follow the control's state and tell the control what the user does.
class ControlWindow {
public:
    ControlWindow(Control& control, WindowHost& host) : control_(control), host_(host) {}
    virtual ~ControlWindow();
    ControlWindow(const ControlWindow&) = delete;
    ControlWindow& operator=(const ControlWindow&) = delete;
    /// The control that a window belongs to; null for none.
    static ControlWindow* Of(HWND window);

    Control& Shown() const noexcept { return control_; }
    const std::vector<HWND>& Windows() const noexcept { return windows_; }
    /// Makes the windows, in tab order below those that are there.
    virtual void Create() = 0;
    /// Shows the control's value and texts, without telling the control.
    virtual void Refresh() = 0;
    virtual void ShowState(bool visible, bool enabled);

    virtual SIZE Natural() const = 0;
    virtual SIZE Least() const { return Natural(); }
    virtual void Place(const RECT& place);
    /// Takes the room that is left in its row / in its dialog.
    virtual bool Widens() const { return false; }
    virtual bool Heightens() const { return false; }
    /// The resolution changed.
    virtual void Rescale();

    /// What the focus goes to; null where it cannot.
    virtual HWND FocusStop() const { return nullptr; }
    /// The field holds what is no value of the control and was left so.
    bool IsMarked() const noexcept { return marked_; }
    /// Why what stands in the field is no value of the control; empty when it is one.
    virtual std::wstring Complaint() const { return {}; }
    /// Something of the system's own is open over the field (a list, suggestions) and takes the key.
    virtual bool KeepsKey(WPARAM /*key*/) const { return false; }

    // What the windows tell their parent.
    virtual void Command(int /*code*/, HWND /*window*/) {}
    virtual LRESULT Notify(NMHDR& /*notice*/) { return 0; }
    virtual void Draw(const DRAWITEMSTRUCT& /*item*/) {}
    virtual void Settled() {}

protected:
    WindowHost& Host() const noexcept { return host_; }
    const Look& Looks() const { return host_.Looks(); }
    HWND First() const { return windows_.empty() ? nullptr : windows_.front(); }
    HWND Make(const wchar_t* windowClass, const std::wstring& text, DWORD style, DWORD outerStyle = 0);
    void Remove(HWND window);
    /// A message to one of the windows before it sees it; an answer keeps it from there.
    virtual std::optional<LRESULT> Received(HWND, UINT, WPARAM, LPARAM) { return std::nullopt; }
    LRESULT Default(HWND window, UINT message, WPARAM wParam, LPARAM lParam);
    void Mark(bool wrong);
    static std::wstring TextIn(HWND window);

private:
    static LRESULT CALLBACK Procedure(HWND window, UINT message, WPARAM wParam, LPARAM lParam) noexcept;

    Control& control_;
    WindowHost& host_;
    std::vector<HWND> windows_;
    std::vector<WNDPROC> procedures_;  // of the windows as the system made them
    bool marked_ = false;
};

/// The windows for a control of any kind. `surrounds` tells a frame that stands around rows from one that is a line in
/// a row.
std::unique_ptr<ControlWindow> MakeControlWindow(Control& control, WindowHost& host, bool surrounds);

}  // namespace vlm::ui
