#pragma once

#include <string>
#include <string_view>
#include <windows.h>

namespace vlm::ui {

std::wstring Wide(std::string_view utf8);
std::string Narrow(std::wstring_view wide);

/// The dots an inch that a window is drawn with (of the screen for null). The host says how it takes resolutions; the
/// library never changes that.
int DpiOf(HWND window);

/// How texts are drawn at one resolution, in the font that the user chose for messages. Lengths are in pixels.
class Look {
public:
    explicit Look(int dpi);
    ~Look();
    Look(const Look&) = delete;
    Look& operator=(const Look&) = delete;

    int Dpi() const noexcept { return dpi_; }
    /// What is so many pixels at 96 dots an inch.
    int Pixels(int at96) const { return MulDiv(at96, dpi_, USER_DEFAULT_SCREEN_DPI); }
    HFONT Font() const noexcept { return font_; }
    /// Every character as wide as the next.
    HFONT EvenFont() const noexcept { return evenFont_; }
    int CharWidth() const noexcept { return charWidth_; }  // on average
    int LineHeight() const noexcept { return lineHeight_; }
    /// Of fields that hold one line.
    int FieldHeight() const { return lineHeight_ + Pixels(8); }
    /// The room that a text takes, with "&" as a mark when `marks`; broken into lines at `width`, where that is not 0.
    SIZE Measure(const std::wstring& text, bool marks = false, int width = 0) const;

private:
    int dpi_;
    HFONT font_ = nullptr;
    HFONT evenFont_ = nullptr;
    int charWidth_ = 0;
    int lineHeight_ = 0;
};

/// Windows made while it lives have the controls of the current system, whichever ones the host uses.
class CurrentControls {
public:
    CurrentControls();
    ~CurrentControls();
    CurrentControls(const CurrentControls&) = delete;
    CurrentControls& operator=(const CurrentControls&) = delete;

private:
    HANDLE context_;
    ULONG_PTR cookie_ = 0;
};

/// The library or program that this code stands in.
HINSTANCE OwnModule();

}  // namespace vlm::ui
