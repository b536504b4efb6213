#include "qt/QtToolkit.h"

#include <QApplication>
#include <QDesktopServices>
#include <QUrl>

#include "AskWindows.h"
#include "GridPrint.h"
#include "QtDialog.h"
#include "controls/GridWidget.h"
#include "controls/QtText.h"

namespace vlm::ui {

namespace {

/// The application has one pointer, whichever toolkit in it set it.
bool HasHourglass() { return QApplication::overrideCursor() != nullptr; }

}  // namespace

class QtToolkit::PointerLift {
public:
    explicit PointerLift(QtToolkit& toolkit) : toolkit_(toolkit), hourglass_(HasHourglass()) {
        toolkit_.SetPointer(Pointer::Normal);
    }
    ~PointerLift() { toolkit_.SetPointer(hourglass_ ? Pointer::Hourglass : Pointer::Normal); }
    PointerLift(const PointerLift&) = delete;
    PointerLift& operator=(const PointerLift&) = delete;

private:
    QtToolkit& toolkit_;
    bool hourglass_;
};

QtToolkit::QtToolkit(sys::SettingsStore& settings)
    : onPrinted([](const std::string& path) { QDesktopServices::openUrl(QUrl::fromLocalFile(ToQt(path))); }),
      settings_(settings) {}

/// Of another toolkit in the same program when this one shows none.
QWidget* QtToolkit::TopWindow() const {
    return shown_.empty() ? QApplication::activeModalWidget() : shown_.back()->Window();
}

ControlWidget* QtToolkit::Find(const Control& control) const {
    return shown_.empty() ? nullptr : shown_.back()->Find(control);
}

void QtToolkit::ShowModal(Dialog& dialog) {
    const PointerLift lift(*this);
    QtDialog showing(dialog, settings_, TopWindow());
    struct Entry {
        Entry(std::vector<QtDialog*>& list, QtDialog* entry) : shown(list) { shown.push_back(entry); }
        ~Entry() { shown.pop_back(); }
        std::vector<QtDialog*>& shown;
    } const entry(shown_, &showing);
    showing.Show();
}

Answer QtToolkit::Show(const Message& message) {
    const PointerLift lift(*this);
    return AskInWindow(message, TopWindow());
}

std::optional<std::string> QtToolkit::ChooseFile(const FileChoice& choice) {
    const PointerLift lift(*this);
    return ChooseFileInWindow(choice, TopWindow());
}

std::optional<std::string> QtToolkit::ChooseFolder(const std::string& startFolder) {
    const PointerLift lift(*this);
    return ChooseFolderInWindow(startFolder, TopWindow());
}

/// Set and taken away, not counted: whoever sets the normal pointer means it.
void QtToolkit::SetPointer(Pointer pointer) {
    const bool hourglass = pointer == Pointer::Hourglass;
    if (hourglass == HasHourglass()) return;
    hourglass ? QApplication::setOverrideCursor(Qt::WaitCursor) : QApplication::restoreOverrideCursor();
}

bool QtToolkit::Print(const Grid& grid, const std::string& title) {
    const PointerLift lift(*this);
    const std::optional<std::string> path = ChoosePrintFileInWindow(title, TopWindow());
    if (!path) return true;
    const auto* shown = static_cast<const GridWidget*>(Find(grid));
    PrintGrid(grid, title, *path, [shown](int place) { return shown != nullptr ? shown->RowAt(place) : place; });
    onPrinted(*path);
    return true;
}

}  // namespace vlm::ui
