#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <unordered_map>

#include "frame/Library.h"

namespace vlm {

/// The comuni that a source names, each looked up once in a read.
class ComuneFinder {
public:
    struct Comune {
        std::int64_t id = 0;  // 0: not found
        std::string name;     // only of a comune found by its ISTAT code
        std::string cap;
    };

    explicit ComuneFinder(const Library& library) : library_(library) {}

    /// The first comune in alphabetical order whose name begins so, without regard to case. An empty name and one that
    /// a pattern would read differently (it holds "%", "_" or "[") find none.
    std::int64_t FindComuneByName(std::string_view name);
    /// The postal code of a comune that is there; "" when it has none.
    const std::string& PostalCodeOf(std::int64_t idComune);
    /// Nothing, and no query, for a code that is no number; id 0 when there is no such comune.
    std::optional<Comune> FindComuneByIstat(std::string_view code);

private:
    /// Texts are found by a view of them.
    struct Hash {
        using is_transparent = void;
        std::size_t operator()(std::string_view value) const noexcept { return std::hash<std::string_view>{}(value); }
    };
    template <typename T>
    using ByText = std::unordered_map<std::string, T, Hash, std::equal_to<>>;

    const Library& library_;
    ByText<std::int64_t> byName_;
    ByText<Comune> byIstat_;
    std::unordered_map<std::int64_t, std::string> postalCodes_;
};

}  // namespace vlm
