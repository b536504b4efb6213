#pragma once

#include <windows.h>
// It builds on windows.h.
#include <commctrl.h>
#include <functional>
#include <string>
#include <vector>

#include "console/ConsoleScript.h"
#include "console/EventLog.h"
#include "support/WindowUser.h"
#include "win32/Win32Toolkit.h"

namespace vlm::ui::test {

/// Does `deed` in whatever loop runs, each time that nothing else is waiting there, until it says that it is done.
class Ticks {
public:
    explicit Ticks(std::function<bool()> deed);
    ~Ticks();
    Ticks(const Ticks&) = delete;
    Ticks& operator=(const Ticks&) = delete;

private:
    std::function<bool()> deed_;
    UINT_PTR timer_;
};

/// The first window of a shown control; of options the one in that place.
HWND WindowOf(const Control& control, int place = 0);
/// The control that has the focus, "" for none.
std::string FocusIn(const Dialog& dialog);
/// The window that waits for an answer: on top of all others of the thread.
HWND TopWindow();
std::wstring TextOf(HWND window);
HWND ButtonIn(HWND window, const std::wstring& text);

// Input that comes once the current step is over.

void TakeFocus(const Control& control);
/// A mouse click at a place of the window, its middle by default; `keys` as the system numbers them (MK_CONTROL).
void Click(HWND window, POINT place = {-1, -1}, WPARAM keys = 0);
/// Keys where the focus is: "Ctrl+End" is one, "'ab" types two letters, parted by blanks.
void Keys(const std::string& keys);
void TypeOver(const std::string& text);
/// A grid's row in its place: a click on its second column, so that no box is met.
void ClickRow(HWND list, int place);

/// A user before the windows: does a script's steps with mouse and keys, and writes down what happens as the console
/// does. Dialogs are shown by the windows' own toolkit.
class Win32User : public Toolkit {
public:
    Win32User(const std::vector<std::string>& words, EventLog& log) : script_(words), log_(log) {}

    void ShowModal(Dialog& dialog) override;
    Answer Show(const Message& message) override;
    std::optional<std::string> ChooseFile(const FileChoice& choice) override;
    std::optional<std::string> ChooseFolder(const std::string& startFolder) override;
    void SetPointer(Pointer pointer) override;

private:
    void Do(Dialog& dialog, const ScriptStep& step);
    std::optional<std::string> TakeAnswer();
    std::function<bool()> AnswerChooser();

    MemorySettings settings_;
    Win32Toolkit toolkit_{settings_};
    ConsoleScript script_;
    EventLog& log_;
    int depth_ = 0;
};

/// Where the windows do not show what their controls hold, a line for each.
std::string Differences(const Dialog& dialog);

}  // namespace vlm::ui::test
