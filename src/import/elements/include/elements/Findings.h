#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "elements/ElementList.h"

namespace vlm {

/// What a read could not take from its source, for the user to see. Of each kind the first ones are kept and all are
/// counted.
class Findings {
public:
    enum class Kind { NotADate, NotAComuneCode, NoFiscalCode };
    static constexpr std::size_t kKinds = 3;
    static constexpr std::size_t kKeptOfAKind = 1000;

    struct Finding {
        std::uint64_t line;  // of the source, from 1
        Kind kind;
        ElementColumn column;
        std::string text;  // as the source has it
    };

    void Add(std::uint64_t line, Kind kind, ElementColumn column, std::string_view text);
    bool Empty() const noexcept { return kept_.empty(); }
    void Clear();

    /// One line for each finding, then what was left out: "Riga 12, DataNascita: "31/02/2003" non è una data."
    std::vector<std::string> Report() const;

private:
    std::vector<Finding> kept_;
    std::array<std::size_t, kKinds> counts_{};
};

}  // namespace vlm
