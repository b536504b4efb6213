#include "Look.h"

#include <commctrl.h>

#include "values/Utf16.h"

namespace vlm::ui {

namespace {

constexpr WORD kManifest = 2;  // the resource that asks for the current controls

/// A function that newer systems have; null on others.
template <class Function>
Function Newer(const char* name) {
    return reinterpret_cast<Function>(
        reinterpret_cast<void (*)()>(GetProcAddress(GetModuleHandleW(L"user32.dll"), name)));
}

/// A screen to measure on.
class ScreenContext {
public:
    ScreenContext() : context_(GetDC(nullptr)) {}
    ~ScreenContext() { ReleaseDC(nullptr, context_); }
    ScreenContext(const ScreenContext&) = delete;
    ScreenContext& operator=(const ScreenContext&) = delete;
    operator HDC() const { return context_; }

private:
    HDC context_;
};

LOGFONTW MessageFont(int dpi) {
    NONCLIENTMETRICSW metrics{};
    metrics.cbSize = sizeof metrics;
    using ForDpi = BOOL(WINAPI*)(UINT, UINT, PVOID, UINT, UINT);
    static const auto forDpi = Newer<ForDpi>("SystemParametersInfoForDpi");
    const bool scaled = forDpi != nullptr &&
                        forDpi(SPI_GETNONCLIENTMETRICS, sizeof metrics, &metrics, 0, static_cast<UINT>(dpi)) != FALSE;
    if (!scaled) SystemParametersInfoW(SPI_GETNONCLIENTMETRICS, sizeof metrics, &metrics, 0);
    return metrics.lfMessageFont;
}

HANDLE ControlsContext() {
    std::wstring path(MAX_PATH, L'\0');
    while (GetModuleFileNameW(OwnModule(), path.data(), static_cast<DWORD>(path.size())) == path.size()) {
        path.resize(path.size() * 2);
    }
    ACTCTXW request{};
    request.cbSize = sizeof request;
    request.dwFlags = ACTCTX_FLAG_RESOURCE_NAME_VALID | ACTCTX_FLAG_HMODULE_VALID;
    request.lpSource = path.c_str();
    request.lpResourceName = MAKEINTRESOURCEW(kManifest);
    request.hModule = OwnModule();
    return CreateActCtxW(&request);
}

}  // namespace

std::wstring Wide(std::string_view utf8) { return text::ToUtf16<wchar_t>(utf8); }

std::string Narrow(std::wstring_view wide) { return text::FromUtf16(wide); }

HINSTANCE OwnModule() {
    HMODULE module = nullptr;
    GetModuleHandleExW(GET_MODULE_HANDLE_EX_FLAG_FROM_ADDRESS | GET_MODULE_HANDLE_EX_FLAG_UNCHANGED_REFCOUNT,
                       reinterpret_cast<LPCWSTR>(&OwnModule), &module);
    return module;
}

int DpiOf(HWND window) {
    using OfWindow = UINT(WINAPI*)(HWND);
    static const auto ofWindow = Newer<OfWindow>("GetDpiForWindow");
    const UINT dpi = window != nullptr && ofWindow != nullptr ? ofWindow(window) : 0;
    return dpi != 0 ? static_cast<int>(dpi) : GetDeviceCaps(ScreenContext(), LOGPIXELSY);
}

Look::Look(int dpi) : dpi_(dpi) {
    LOGFONTW font = MessageFont(dpi);
    font_ = CreateFontIndirectW(&font);
    font.lfPitchAndFamily = FIXED_PITCH | FF_MODERN;
    Wide("Consolas").copy(font.lfFaceName, LF_FACESIZE - 1);
    font.lfFaceName[8] = L'\0';
    evenFont_ = CreateFontIndirectW(&font);
    const SIZE alphabet = Measure(L"ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz");
    charWidth_ = alphabet.cx / 52;
    lineHeight_ = alphabet.cy;
}

Look::~Look() {
    DeleteObject(font_);
    DeleteObject(evenFont_);
}

SIZE Look::Measure(const std::wstring& text, bool marks, int width) const {
    const ScreenContext screen;
    const HGDIOBJ before = SelectObject(screen, font_);
    RECT room{0, 0, width, 0};
    const UINT how = DT_CALCRECT | (marks ? 0U : DT_NOPREFIX) | (width != 0 ? DT_WORDBREAK : 0U);
    DrawTextW(screen, text.empty() ? L" " : text.c_str(), -1, &room, how);
    SelectObject(screen, before);
    return {text.empty() ? 0 : room.right, room.bottom};
}

CurrentControls::CurrentControls() {
    static const HANDLE shared = [] {
        const HANDLE made = ControlsContext();
        return made;
    }();
    context_ = shared;
    if (context_ != INVALID_HANDLE_VALUE && ActivateActCtx(context_, &cookie_) == FALSE) cookie_ = 0;
    static const bool registered = [] {
        INITCOMMONCONTROLSEX classes{sizeof classes, ICC_LISTVIEW_CLASSES | ICC_PROGRESS_CLASS | ICC_UPDOWN_CLASS |
                                                         ICC_DATE_CLASSES | ICC_STANDARD_CLASSES};
        return InitCommonControlsEx(&classes) != FALSE;
    }();
    static_cast<void>(registered);
}

CurrentControls::~CurrentControls() {
    if (cookie_ != 0) DeactivateActCtx(0, cookie_);
}

}  // namespace vlm::ui
