#pragma once

#include <string_view>
#include <utility>
#include <vector>

namespace vlm::data {

/// A pattern of LIKE as the host's server reads it: `%` any characters, `_` one, `[a-f]` and `[^a-f]` one of a class.
/// Without regard to case, for letters with accents too.
class LikePattern {
public:
    /// `escape` (0 for none) takes the character after it for itself.
    explicit LikePattern(std::string_view pattern, char32_t escape = 0);

    bool Matches(std::string_view value) const noexcept;

private:
    enum class Kind { Character, Any, AnyRun, Class };
    struct Element {
        Kind kind = Kind::Character;
        char32_t character = 0;
        bool negated = false;
        std::vector<std::pair<char32_t, char32_t>> ranges;
    };
    static bool TakeClass(std::string_view& rest, Element& element);
    static bool Accepts(const Element& element, char32_t character) noexcept;

    std::vector<Element> elements_;
};

}  // namespace vlm::data
