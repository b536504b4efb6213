#pragma once

#include "ControlWindow.h"

namespace vlm::ui {

/// The windows of a control of kind `T`.
template <class T>
class WindowOf : public ControlWindow {
public:
    using ControlWindow::ControlWindow;
    T& Shown() const noexcept { return As<T>(ControlWindow::Shown()); }
};

/// A line of text to edit: takes only what may become a value.
template <class T>
class EntryOf : public WindowOf<T> {
public:
    using WindowOf<T>::WindowOf;
    HWND FocusStop() const override { return this->First(); }

protected:
    void MakeEdit(DWORD style) { this->Make(WC_EDITW, L"", style | WS_TABSTOP | ES_AUTOHSCROLL, WS_EX_CLIENTEDGE); }
    /// Without telling the control.
    void ShowText(const std::wstring& text) {
        showing_ = true;
        SetWindowTextW(this->First(), text.c_str());
        showing_ = false;
        last_ = text;
    }
    virtual bool MayStand(const std::wstring& /*text*/) const { return true; }
    virtual void Edited(const std::wstring& text) = 0;
    virtual void Left() {}

    void Command(int code, HWND window) override {
        if (window != this->First() || showing_) return;
        if (code == EN_KILLFOCUS) Left();
        if (code != EN_CHANGE) return;
        const std::wstring text = this->TextIn(window);
        if (MayStand(text)) {
            last_ = text;
            return Edited(text);
        }
        DWORD start = 0;
        SendMessageW(window, EM_GETSEL, reinterpret_cast<WPARAM>(&start), 0);
        const auto added = static_cast<int>(text.size()) - static_cast<int>(last_.size());
        const int caret = static_cast<int>(start) - (added > 0 ? added : 0);
        ShowText(std::wstring(last_));
        SendMessageW(window, EM_SETSEL, static_cast<WPARAM>(caret), caret);
        MessageBeep(MB_OK);
    }

private:
    bool showing_ = false;
    std::wstring last_;  // what stood there last
};

std::unique_ptr<ControlWindow> MakeLabel(Control& control, WindowHost& host);
/// A frame around rows of its dialog.
std::unique_ptr<ControlWindow> MakeBorder(Control& control, WindowHost& host);
/// A frame in a row of its dialog: a line.
std::unique_ptr<ControlWindow> MakeLine(Control& control, WindowHost& host);
std::unique_ptr<ControlWindow> MakeButton(Control& control, WindowHost& host);
std::unique_ptr<ControlWindow> MakeText(Control& control, WindowHost& host);
std::unique_ptr<ControlWindow> MakeNumber(Control& control, WindowHost& host);
std::unique_ptr<ControlWindow> MakeDate(Control& control, WindowHost& host);
std::unique_ptr<ControlWindow> MakeCheckBox(Control& control, WindowHost& host);
std::unique_ptr<ControlWindow> MakeOptions(Control& control, WindowHost& host);
std::unique_ptr<ControlWindow> MakeFixedList(Control& control, WindowHost& host);
std::unique_ptr<ControlWindow> MakePickList(Control& control, WindowHost& host);
std::unique_ptr<ControlWindow> MakeMultiList(Control& control, WindowHost& host);
std::unique_ptr<ControlWindow> MakeProgress(Control& control, WindowHost& host);
std::unique_ptr<ControlWindow> MakeGrid(Control& control, WindowHost& host);

}  // namespace vlm::ui
