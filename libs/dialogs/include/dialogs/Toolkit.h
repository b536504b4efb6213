#pragma once

#include <optional>
#include <string>

#include "dialogs/Dialog.h"
#include "dialogs/Grid.h"

namespace vlm::ui {

enum class Icon { None, Critical, Question, Exclamation, Information };
enum class Buttons { Ok, YesNo };
enum class Answer { Ok, Yes, No };
enum class Pointer { Normal, Hourglass };

struct Message {
    std::string text;  // lines are parted by carriage return and line feed
    std::string caption;
    Icon icon = Icon::None;
    Buttons buttons = Buttons::Ok;
};

/// What a file chooser starts from. `filter` is "name|pattern|name|pattern"; `filterIndex` counts from 1.
struct FileChoice {
    std::string filter;
    int filterIndex = 1;
    std::string defaultExtension;
    std::string folder;
    std::string fileName;
};

/// What shows dialogs and asks people. One object for the life of the library.
class Toolkit {
public:
    virtual ~Toolkit() = default;
    /// Returns when the dialog has closed.
    virtual void ShowModal(Dialog& dialog) = 0;
    virtual Answer Show(const Message& message) = 0;
    /// Full path, or nothing when the user cancelled.
    virtual std::optional<std::string> ChooseFile(const FileChoice& choice) = 0;
    virtual std::optional<std::string> ChooseFolder(const std::string& startFolder) = 0;
    virtual void SetPointer(Pointer pointer) = 0;
    /// Puts the rows that a grid shows on paper, under a title. False where there is nothing to print with; a user who
    /// cancels has been served.
    virtual bool Print(const Grid& /*grid*/, const std::string& /*title*/) { return false; }
};

/// The hourglass for as long as it lives.
class HourglassScope {
public:
    explicit HourglassScope(Toolkit& toolkit) : toolkit_(toolkit) { toolkit_.SetPointer(Pointer::Hourglass); }
    ~HourglassScope() {
        try {
            toolkit_.SetPointer(Pointer::Normal);
        } catch (...) {  // a pointer that stays is no reason to lose the error that may be under way
        }
    }
    HourglassScope(const HourglassScope&) = delete;
    HourglassScope& operator=(const HourglassScope&) = delete;

private:
    Toolkit& toolkit_;
};

}  // namespace vlm::ui
