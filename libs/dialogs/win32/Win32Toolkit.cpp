#include "win32/Win32Toolkit.h"

#include <objbase.h>

#include "Choosers.h"
#include "MessageWindow.h"
#include "Win32Dialog.h"
#include "values/Error.h"

namespace vlm::ui {

namespace {

/// A service has windows that nobody sees: one that waits for its user would wait for ever.
void RequireDesktop() {
    USEROBJECTFLAGS flags{};
    const bool known = GetUserObjectInformationW(GetProcessWindowStation(), UOI_FLAGS, &flags, sizeof flags, nullptr);
    if (known && (flags.dwFlags & WSF_VISIBLE) != 0) return;
    throw Error("Le finestre non sono disponibili: il programma non gira nella sessione di un utente.");
}

}  // namespace

/// While the user is asked: a desktop, an apartment, and the normal pointer whatever goes on.
class Win32Toolkit::Asking {
public:
    explicit Asking(Win32Toolkit& toolkit) : toolkit_(toolkit), hourglass_(toolkit.hourglass_) {
        RequireDesktop();
        toolkit_.SetPointer(Pointer::Normal);
    }
    ~Asking() { toolkit_.SetPointer(hourglass_ ? Pointer::Hourglass : Pointer::Normal); }
    Asking(const Asking&) = delete;
    Asking& operator=(const Asking&) = delete;

    /// The dialog on top; one that still opens has nothing to stand over.
    HWND Owner() const {
        for (auto each = toolkit_.shown_.rbegin(); each != toolkit_.shown_.rend(); ++each) {
            if (IsWindowVisible((*each)->Handle()) != FALSE) return (*each)->Handle();
        }
        return ActiveOwner();
    }

private:
    /// Choosers and the completion of paths live in a single-threaded apartment.
    class Apartment {
    public:
        Apartment() : result_(CoInitializeEx(nullptr, COINIT_APARTMENTTHREADED | COINIT_DISABLE_OLE1DDE)) {
            if (result_ == RPC_E_CHANGED_MODE) {
                throw Error("Le finestre non sono disponibili: il thread non è in un apartment COM singolo (STA).");
            }
        }
        ~Apartment() {
            if (SUCCEEDED(result_)) CoUninitialize();
        }
        Apartment(const Apartment&) = delete;
        Apartment& operator=(const Apartment&) = delete;

    private:
        HRESULT result_;
    };

    Apartment apartment_;
    Win32Toolkit& toolkit_;
    bool hourglass_;
};

void Win32Toolkit::ShowModal(Dialog& dialog) {
    const Asking asking(*this);
    Win32Dialog showing(dialog, settings_, asking.Owner(), hourglass_);
    struct Entry {
        Entry(std::vector<Win32Dialog*>& list, Win32Dialog* entry) : shown(list) { shown.push_back(entry); }
        ~Entry() { shown.pop_back(); }
        std::vector<Win32Dialog*>& shown;
    } const entry(shown_, &showing);
    showing.Show();
}

/// Where nobody sees the message, its text goes to who called.
Answer Win32Toolkit::Show(const Message& message) {
    std::optional<Asking> asking;
    try {
        asking.emplace(*this);
    } catch (const Error&) {
        throw Error(message.text);
    }
    return AskInWindow(message, asking->Owner());
}

std::optional<std::string> Win32Toolkit::ChooseFile(const FileChoice& choice) {
    const Asking asking(*this);
    return ChooseFileInWindow(choice, asking.Owner());
}

std::optional<std::string> Win32Toolkit::ChooseFolder(const std::string& startFolder) {
    const Asking asking(*this);
    return ChooseFolderInWindow(startFolder, asking.Owner());
}

/// Set and taken away, not counted: whoever sets the normal pointer means it.
void Win32Toolkit::SetPointer(Pointer pointer) {
    const bool hourglass = pointer == Pointer::Hourglass;
    if (hourglass == hourglass_) return;
    hourglass_ = hourglass;
    SetCursor(LoadCursorW(nullptr, reinterpret_cast<LPCWSTR>(hourglass ? IDC_WAIT : IDC_ARROW)));
}

}  // namespace vlm::ui
