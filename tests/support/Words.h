#pragma once

#include <iterator>
#include <sstream>
#include <string>
#include <vector>

namespace vlm::test {

using Lines = std::vector<std::string>;

/// The words of a text, parted by blanks: steps as a shell's line has them.
inline Lines WordsOf(const std::string& text) {
    std::istringstream words(text);
    return {std::istream_iterator<std::string>(words), {}};
}

inline Lines LinesOf(const std::string& text) {
    std::istringstream stream(text);
    Lines lines;
    for (std::string line; std::getline(stream, line);) lines.push_back(line);
    return lines;
}

/// Values as one text: whole comparisons tell at once what is right and what is not.
template <typename... Values>
std::string Joined(const Values&... values) {
    std::ostringstream all;
    ((all << values << '|'), ...);
    return all.str();
}

inline Lines operator+(Lines words, const Lines& more) {
    words.insert(words.end(), more.begin(), more.end());
    return words;
}

}  // namespace vlm::test
