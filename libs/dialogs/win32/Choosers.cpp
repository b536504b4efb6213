#include "Choosers.h"

#include <shobjidl.h>
#include <vector>

#include "Look.h"
#include "values/Error.h"

namespace vlm::ui {

namespace {

/// An object of the shell's, let go at the end.
template <class Interface>
class Held {
public:
    Held() = default;
    ~Held() {
        if (object_ != nullptr) object_->Release();
    }
    Held(const Held&) = delete;
    Held& operator=(const Held&) = delete;
    Interface* operator->() const { return object_; }
    Interface* Get() const { return object_; }
    void** Place() { return reinterpret_cast<void**>(&object_); }

private:
    Interface* object_ = nullptr;
};

/// The folder, or the nearest one above it that is there; the chooser's own for none.
void StartIn(IFileDialog& chooser, std::wstring folder) {
    while (!folder.empty()) {
        Held<IShellItem> item;
        if (SUCCEEDED(SHCreateItemFromParsingName(folder.c_str(), nullptr, IID_IShellItem, item.Place()))) {
            chooser.SetFolder(item.Get());
            return;
        }
        const std::size_t last = folder.find_last_of(L"\\/", folder.size() - 2);
        folder.resize(last == std::wstring::npos ? 0 : last);
        if (!folder.empty() && folder.back() == L':') folder += L'\\';
        if (folder.size() <= 3 && last != std::wstring::npos && last < 2) folder.clear();
    }
}

/// "name|pattern|name|pattern": the parts, of which each pair is an entry.
std::vector<std::wstring> PartsOf(const std::string& filter) {
    std::vector<std::wstring> parts;
    const std::wstring wide = Wide(filter);
    for (std::size_t from = 0; from <= wide.size();) {
        const std::size_t bar = std::min(wide.find(L'|', from), wide.size());
        parts.push_back(wide.substr(from, bar - from));
        from = bar + 1;
    }
    return parts;
}

std::optional<std::string> Choose(IFileDialog& chooser, const wchar_t* title, DWORD options, HWND owner) {
    FILEOPENDIALOGOPTIONS before = 0;
    chooser.GetOptions(&before);
    chooser.SetOptions((before & ~static_cast<DWORD>(FOS_FILEMUSTEXIST)) | options | FOS_FORCEFILESYSTEM |
                       FOS_NOCHANGEDIR);
    chooser.SetTitle(title);
    chooser.SetOkButtonLabel(L"&Scegli");
    const HRESULT shown = chooser.Show(owner);
    if (shown == HRESULT_FROM_WIN32(ERROR_CANCELLED)) return std::nullopt;
    Held<IShellItem> item;
    PWSTR path = nullptr;
    const bool chosen = SUCCEEDED(shown) &&
                        SUCCEEDED(chooser.GetResult(reinterpret_cast<IShellItem**>(item.Place()))) &&
                        SUCCEEDED(item->GetDisplayName(SIGDN_FILESYSPATH, &path));
    if (!chosen) throw Error("La finestra di scelta del sistema non risponde.");
    std::string text = Narrow(path);
    CoTaskMemFree(path);
    return text;
}

void Make(Held<IFileOpenDialog>& chooser) {
    const HRESULT made =
        CoCreateInstance(CLSID_FileOpenDialog, nullptr, CLSCTX_INPROC_SERVER, IID_IFileOpenDialog, chooser.Place());
    if (FAILED(made)) throw Error("La finestra di scelta del sistema non si apre.");
}

}  // namespace

std::optional<std::string> ChooseFileInWindow(const FileChoice& choice, HWND owner) {
    Held<IFileOpenDialog> chooser;
    Make(chooser);
    const std::vector<std::wstring> parts = PartsOf(choice.filter);
    std::vector<COMDLG_FILTERSPEC> filters;
    for (std::size_t i = 0; i + 1 < parts.size(); i += 2) filters.push_back({parts[i].c_str(), parts[i + 1].c_str()});
    if (!filters.empty()) {
        chooser->SetFileTypes(static_cast<UINT>(filters.size()), filters.data());
        chooser->SetFileTypeIndex(static_cast<UINT>(choice.filterIndex));
    }
    if (!choice.defaultExtension.empty()) chooser->SetDefaultExtension(Wide(choice.defaultExtension).c_str());
    StartIn(*chooser.Get(), Wide(choice.folder));
    if (!choice.fileName.empty()) chooser->SetFileName(Wide(choice.fileName).c_str());
    return Choose(*chooser.Get(), L"Scelta del file", FOS_PATHMUSTEXIST, owner);
}

std::optional<std::string> ChooseFolderInWindow(const std::string& startFolder, HWND owner) {
    Held<IFileOpenDialog> chooser;
    Make(chooser);
    StartIn(*chooser.Get(), Wide(startFolder));
    return Choose(*chooser.Get(), L"Scelta della cartella", FOS_PICKFOLDERS | FOS_PATHMUSTEXIST, owner);
}

}  // namespace vlm::ui
