#pragma once

#include <iosfwd>
#include <string>
#include <string_view>

#include "console/EventLog.h"

namespace vlm::ui {

/// Writes one JSON value piece by piece; commas are its own business. Text is UTF-8 and stays as it is but for what
/// JSON wants escaped; malformed bytes become U+FFFD.
class JsonWriter {
public:
    JsonWriter& BeginObject() { return Open('{'); }
    JsonWriter& EndObject() { return Close('}'); }
    JsonWriter& BeginArray() { return Open('['); }
    JsonWriter& EndArray() { return Close(']'); }
    JsonWriter& Key(std::string_view key);
    JsonWriter& String(std::string_view value);
    JsonWriter& Number(double value);  // whole numbers without a point
    JsonWriter& Boolean(bool value);

    JsonWriter& String(std::string_view key, std::string_view value) { return Key(key).String(value); }
    JsonWriter& Number(std::string_view key, double value) { return Key(key).Number(value); }
    JsonWriter& Boolean(std::string_view key, bool value) { return Key(key).Boolean(value); }

    const std::string& Json() const noexcept { return json_; }

private:
    JsonWriter& Open(char bracket);
    JsonWriter& Close(char bracket);
    void Separate();
    void Quote(std::string_view value);

    std::string json_;
    bool needsComma_ = false;
};

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
