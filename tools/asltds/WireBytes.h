#pragma once

#include <cstdint>
#include <stdexcept>
#include <string>
#include <string_view>

namespace vlm::host::tds {

/// What came over the wire is not of the protocol; the connection is ended without a word.
class ProtocolError : public std::runtime_error {
public:
    using std::runtime_error::runtime_error;
};

/// Bytes of a token in the making. Numbers have their low byte first, characters are UTF-16.
class ByteString {
public:
    void Clear() { bytes_.clear(); }
    std::string_view View() const { return bytes_; }
    std::size_t Size() const { return bytes_.size(); }

    void Add(std::uint64_t value, int width) {
        for (int byte = 0; byte < width; ++byte) bytes_ += static_cast<char>(value >> (8 * byte) & 0xFF);
    }
    void Add(std::string_view bytes) { bytes_ += bytes; }
    void AddWide(std::string_view utf8);
    void AddAnsi(std::string_view utf8);
    /// A name or message after its number of characters, which has `width` bytes; cut to what the number can say.
    void AddCounted(std::string_view utf8, int width);

    /// Room for a number that is known later.
    std::size_t Reserve(int width) {
        bytes_.append(static_cast<std::size_t>(width), '\0');
        return bytes_.size() - static_cast<std::size_t>(width);
    }
    void Fill(std::size_t position, std::uint64_t value, int width) {
        for (int byte = 0; byte < width; ++byte, ++position) bytes_[position] = static_cast<char>(value >> (8 * byte));
    }

private:
    std::string bytes_;
};

/// Takes apart what came over the wire. Reading past the end throws ProtocolError.
class ByteReader {
public:
    explicit ByteReader(std::string_view bytes) : rest_(bytes) {}

    bool AtEnd() const { return rest_.empty(); }
    std::string_view Rest() const { return rest_; }
    std::string_view Take(std::size_t count);
    /// `width` up to eight bytes.
    std::uint64_t Number(int width);
    std::uint8_t Byte() { return static_cast<std::uint8_t>(Number(1)); }
    /// UTF-16 as UTF-8.
    std::string Wide(std::size_t characters);

private:
    std::string_view rest_;
};

/// UTF-16, low byte first, as UTF-8. Throws ProtocolError for half a character.
std::string FromWide(std::string_view bytes);

}  // namespace vlm::host::tds
