#pragma once

#include <iterator>
#include <sstream>
#include <string>
#include <vector>

namespace vlm::test {

/// The words of a text, parted by blanks: steps as a shell's line has them.
inline std::vector<std::string> WordsOf(const std::string& text) {
    std::istringstream words(text);
    return {std::istream_iterator<std::string>(words), {}};
}

/// The lines of a text.
inline std::vector<std::string> LinesOf(const std::string& text) {
    std::istringstream stream(text);
    std::vector<std::string> lines;
    for (std::string line; std::getline(stream, line);) lines.push_back(line);
    return lines;
}

inline std::vector<std::string> operator+(std::vector<std::string> words, const std::vector<std::string>& more) {
    words.insert(words.end(), more.begin(), more.end());
    return words;
}

}  // namespace vlm::test
