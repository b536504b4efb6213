#include "LikePattern.h"

#include <algorithm>
#include <optional>

#include "values/Utf8.h"

namespace vlm::data {

namespace {
char32_t TakeFolded(std::string_view& rest) noexcept { return text::ToLower(text::Decode(rest)); }
}  // namespace

LikePattern::LikePattern(std::string_view pattern, char32_t escape) {
    while (!pattern.empty()) {
        Element element;
        const bool opensClass = pattern.front() == '[';
        if (opensClass && TakeClass(pattern, element)) {
            elements_.push_back(std::move(element));
            continue;
        }
        char32_t character = text::Decode(pattern);
        if (escape != 0 && character == escape && !pattern.empty()) {
            character = text::Decode(pattern);
        } else if (character == '%') {
            element.kind = Kind::AnyRun;
        } else if (character == '_') {
            element.kind = Kind::Any;
        }
        element.character = text::ToLower(character);
        elements_.push_back(std::move(element));
    }
}

/// False, with nothing taken, when the bracket does not close: it then stands for itself.
bool LikePattern::TakeClass(std::string_view& rest, Element& element) {
    const std::size_t end = rest.find(']', 1);
    if (end == std::string_view::npos) return false;
    std::string_view members = rest.substr(1, end - 1);
    element.kind = Kind::Class;
    element.negated = !members.empty() && members.front() == '^';
    if (element.negated) members.remove_prefix(1);
    while (!members.empty()) {
        const char32_t first = TakeFolded(members);
        char32_t last = first;
        if (members.size() > 1 && members.front() == '-') {
            members.remove_prefix(1);
            last = TakeFolded(members);
        }
        element.ranges.emplace_back(first, last);
    }
    rest.remove_prefix(end + 1);
    return true;
}

bool LikePattern::Accepts(const Element& element, char32_t character) noexcept {
    if (element.kind == Kind::Any) return true;
    if (element.kind == Kind::Character) return element.character == character;
    const bool member = std::any_of(element.ranges.begin(), element.ranges.end(), [character](const auto& range) {
        return character >= range.first && character <= range.second;
    });
    return member != element.negated;
}

/// Where a character does not fit, the last run takes one character more: earlier runs never need to.
bool LikePattern::Matches(std::string_view value) const noexcept {
    std::size_t element = 0;
    std::optional<std::size_t> run;
    std::string_view afterRun;
    while (!value.empty()) {
        if (element < elements_.size() && elements_[element].kind == Kind::AnyRun) {
            run = element++;
            afterRun = value;
            continue;
        }
        std::string_view next = value;
        if (element < elements_.size() && Accepts(elements_[element], TakeFolded(next))) {
            ++element;
            value = next;
            continue;
        }
        if (!run) return false;
        text::Decode(afterRun);
        value = afterRun;
        element = *run + 1;
    }
    while (element < elements_.size() && elements_[element].kind == Kind::AnyRun) ++element;
    return element == elements_.size();
}

}  // namespace vlm::data
