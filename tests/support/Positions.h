#pragma once

#include <initializer_list>
#include <string>

namespace vlm::test {

struct Piece {
    std::size_t position;
    std::string text;
};
inline Piece At(std::size_t position, const std::string& text) { return {position, text}; }

/// An expected line of a file, put together position by position (from 1) as the region prints its table. Texts are
/// bytes of the file.
class Positions {
public:
    explicit Positions(std::size_t length, std::initializer_list<Piece> pieces = {}) : line_(length, ' ') {
        With(pieces);
    }
    Positions& With(std::initializer_list<Piece> pieces) {
        for (const Piece& piece : pieces) At(piece.position, piece.text);
        return *this;
    }
    Positions& At(std::size_t position, const std::string& text) {
        line_.replace(position - 1, text.size(), text);
        return *this;
    }
    std::string Line() const { return line_; }
    std::string WithLineEnd() const { return line_ + "\r\n"; }

private:
    std::string line_;
};

}  // namespace vlm::test
