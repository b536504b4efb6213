#pragma once

#include <string>
#include <string_view>

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

}  // namespace vlm::ui
