#include "console/JsonEventLog.h"

#include <array>
#include <charconv>
#include <ostream>

#include "ControlKinds.h"
#include "values/Utf8.h"

namespace vlm::ui {

namespace {

void AppendEscaped(char character, std::string& out) {
    constexpr std::string_view kDigits = "0123456789abcdef";
    switch (character) {
        case '"':
            out += "\\\"";
            return;
        case '\\':
            out += "\\\\";
            return;
        case '\n':
            out += "\\n";
            return;
        case '\r':
            out += "\\r";
            return;
        case '\t':
            out += "\\t";
            return;
        default:
            break;
    }
    const auto code = static_cast<unsigned char>(character);
    if (code >= 0x20) {
        out += character;
        return;
    }
    out += "\\u00";
    out += kDigits[code >> 4];
    out += kDigits[code & 15];
}

JsonWriter Event(std::string_view event) {
    JsonWriter json;
    json.BeginObject().String("event", event);
    return json;
}

std::string_view JsonWord(Icon icon) {
    switch (icon) {
        case Icon::Critical:
            return "critical";
        case Icon::Question:
            return "question";
        case Icon::Exclamation:
            return "exclamation";
        case Icon::Information:
            return "information";
        case Icon::None:
            break;
    }
    return "none";
}

std::string_view JsonWord(Answer answer) {
    switch (answer) {
        case Answer::Yes:
            return "yes";
        case Answer::No:
            return "no";
        case Answer::Ok:
            break;
    }
    return "ok";
}

}  // namespace

JsonWriter& JsonWriter::Key(std::string_view key) {
    Separate();
    Quote(key);
    json_ += ':';
    needsComma_ = false;
    return *this;
}

JsonWriter& JsonWriter::String(std::string_view value) {
    Separate();
    Quote(value);
    return *this;
}

JsonWriter& JsonWriter::Number(double value) {
    Separate();
    std::array<char, 400> digits;  // the largest double has 309 of them before the point
    const auto end = std::to_chars(digits.data(), digits.data() + digits.size(), value, std::chars_format::fixed).ptr;
    json_.append(digits.data(), end);
    return *this;
}

JsonWriter& JsonWriter::Boolean(bool value) {
    Separate();
    json_ += value ? "true" : "false";
    return *this;
}

JsonWriter& JsonWriter::Open(char bracket) {
    Separate();
    json_ += bracket;
    needsComma_ = false;
    return *this;
}

JsonWriter& JsonWriter::Close(char bracket) {
    json_ += bracket;
    needsComma_ = true;
    return *this;
}

void JsonWriter::Separate() {
    if (needsComma_) json_ += ',';
    needsComma_ = true;
}

void JsonWriter::Quote(std::string_view value) {
    json_ += '"';
    while (!value.empty()) {
        if (static_cast<unsigned char>(value.front()) < 0x80) {
            AppendEscaped(value.front(), json_);
            value.remove_prefix(1);
        } else {
            text::Encode(text::Decode(value), json_);
        }
    }
    json_ += '"';
}

void JsonEventLog::DialogOpened(const Dialog& dialog) {
    WriteLine(Event("dialog").String("name", dialog.Name()).String("title", dialog.Title()));
}

void JsonEventLog::DialogClosed(const Dialog& dialog) { WriteLine(Event("closed").String("name", dialog.Name())); }

void JsonEventLog::MessageShown(const Message& message, Answer answer) {
    JsonWriter json = Event("message");
    json.String("text", message.text).String("caption", message.caption).String("icon", JsonWord(message.icon));
    json.String("buttons", message.buttons == Buttons::YesNo ? "yesno" : "ok").String("answer", JsonWord(answer));
    WriteLine(json);
}

void JsonEventLog::FileChosen(const FileChoice& choice, const std::optional<std::string>& answer) {
    Choose("file", choice, answer);
}

void JsonEventLog::FolderChosen(const std::string& startFolder, const std::optional<std::string>& answer) {
    FileChoice choice;
    choice.filterIndex = 0;
    choice.folder = startFolder;
    Choose("folder", choice, answer);
}

void JsonEventLog::Choose(std::string_view kind, const FileChoice& choice, const std::optional<std::string>& answer) {
    JsonWriter json = Event("choose");
    json.String("kind", kind).String("filter", choice.filter).Number("filterIndex", choice.filterIndex);
    json.String("folder", choice.folder).String("fileName", choice.fileName);
    json.String("answer", answer.value_or("cancel"));
    WriteLine(json);
}

void JsonEventLog::State(const Control& control) {
    JsonWriter json = Event("state");
    WriteState(control, json);
    WriteLine(json);
}

void JsonEventLog::FocusMoved(const Control& control) { WriteLine(Event("focus").String("name", control.Name())); }

void JsonEventLog::Run(const std::string& command) { WriteLine(Event("run").String("command", command)); }

void JsonEventLog::Progress(int percent) { WriteLine(Event("progress").Number("value", percent)); }

void JsonEventLog::Help(int context) { WriteLine(Event("help").Number("context", context)); }

void JsonEventLog::PointerChanged(Pointer pointer) {
    WriteLine(Event("pointer").String("shape", pointer == Pointer::Hourglass ? "hourglass" : "normal"));
}

void JsonEventLog::WriteLine(JsonWriter& json) {
    json.EndObject();
    out_ << json.Json() << '\n' << std::flush;
}

}  // namespace vlm::ui
