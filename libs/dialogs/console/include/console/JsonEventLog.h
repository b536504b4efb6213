#pragma once

#include <iosfwd>

#include "console/EventLog.h"
#include "console/JsonWriter.h"

namespace vlm::ui {

/// One JSON object a line, flushed line by line, for programs.
class JsonEventLog : public EventLog {
public:
    explicit JsonEventLog(std::ostream& out) : out_(out) {}

    void DialogOpened(const Dialog& dialog) override;
    void DialogClosed(const Dialog& dialog) override;
    void MessageShown(const Message& message, Answer answer) override;
    void FileChosen(const FileChoice& choice, const std::optional<std::string>& answer) override;
    void FolderChosen(const std::string& startFolder, const std::optional<std::string>& answer) override;
    void State(const Control& control) override;
    void FocusMoved(const Control& control) override;
    void Run(const std::string& command) override;
    void Progress(int percent) override;
    void Help(int context) override;
    void PointerChanged(Pointer pointer) override;

private:
    void Choose(std::string_view kind, const FileChoice& choice, const std::optional<std::string>& answer);
    void WriteLine(JsonWriter& json);

    std::ostream& out_;
};

}  // namespace vlm::ui
