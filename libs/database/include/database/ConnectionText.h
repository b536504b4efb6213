#pragma once

#include <map>
#include <string>
#include <string_view>

namespace vlm::data {

/// A connection text: `Key=Value;Key="a;b"`. Keys compare without regard to case; a value may stand in single or
/// double quotes (doubled inside). Throws Error for a piece that is no `Key=Value`.
class ConnectionText {
public:
    explicit ConnectionText(std::string_view text);

    /// "" when the key is absent.
    std::string ValueOf(std::string_view key) const;

private:
    std::map<std::string, std::string> values_;  // by folded key
};

}  // namespace vlm::data
