#include "console/JsonWriter.h"

#include <array>
#include <charconv>

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

}  // namespace vlm::ui
