#include "WireBytes.h"

#include <algorithm>

#include "values/CodePage1252.h"
#include "values/Utf16.h"

namespace vlm::host::tds {

void ByteString::AddWide(std::string_view utf8) {
    const std::size_t plain = text::AsciiPrefix(utf8);
    for (const char each : utf8.substr(0, plain)) {
        bytes_ += each;
        bytes_ += '\0';
    }
    for (std::string_view rest = utf8.substr(plain); !rest.empty();) {
        const char32_t character = text::Decode(rest);
        if (character < 0x10000) {
            Add(character, 2);
        } else {
            Add(0xD800 + ((character - 0x10000) >> 10), 2);
            Add(0xDC00 + ((character - 0x10000) & 0x3FF), 2);
        }
    }
}

void ByteString::AddAnsi(std::string_view utf8) { text::AppendAnsi(utf8, bytes_); }

void ByteString::AddCounted(std::string_view utf8, int width) {
    const std::size_t count = Reserve(width);
    AddWide(utf8);
    const std::size_t most = (std::size_t{1} << (8 * width)) - 1;
    const std::size_t characters = std::min((bytes_.size() - count - static_cast<std::size_t>(width)) / 2, most);
    bytes_.resize(count + static_cast<std::size_t>(width) + 2 * characters);
    Fill(count, characters, width);
}

std::string_view ByteReader::Take(std::size_t count) {
    if (count > rest_.size()) throw ProtocolError("a message ends before what it announces");
    const std::string_view taken = rest_.substr(0, count);
    rest_.remove_prefix(count);
    return taken;
}

std::uint64_t ByteReader::Number(int width) {
    std::uint64_t value = 0;
    const std::string_view bytes = Take(static_cast<std::size_t>(width));
    for (std::size_t byte = 0; byte < bytes.size(); ++byte) {
        value |= std::uint64_t{static_cast<unsigned char>(bytes[byte])} << (8 * byte);
    }
    return value;
}

std::string ByteReader::Wide(std::size_t characters) {
    if (characters > rest_.size() / 2) throw ProtocolError("a text ends before its announced length");
    return FromWide(Take(2 * characters));
}

std::string FromWide(std::string_view bytes) {
    if (bytes.size() % 2 != 0) throw ProtocolError("a text has half a character");
    std::u16string wide(bytes.size() / 2, u'\0');
    for (std::size_t at = 0; at < wide.size(); ++at) {
        wide[at] = static_cast<char16_t>(static_cast<unsigned char>(bytes[2 * at]) |
                                         static_cast<unsigned char>(bytes[2 * at + 1]) << 8);
    }
    return text::FromUtf16<char16_t>(wide);
}

}  // namespace vlm::host::tds
