#include "elements/Findings.h"

#include "values/Utf8.h"

namespace vlm {

namespace {

constexpr std::array<const char*, Findings::kKinds> kReasons = {
    "non è una data",
    "non è il codice ISTAT di un comune",
    "manca il codice fiscale: la riga non è stata letta",
};

const char* ReasonOf(Findings::Kind kind) { return kReasons[static_cast<std::size_t>(kind)]; }

std::string LineOf(const Findings::Finding& finding) {
    std::string line = "Riga " + std::to_string(finding.line) + ", " + NameOf(finding.column) + ": ";
    if (!finding.text.empty()) line += "\"" + finding.text + "\" ";
    return line + ReasonOf(finding.kind) + ".";
}

}  // namespace

void Findings::Add(std::uint64_t line, Kind kind, ElementColumn column, std::string_view text) {
    if (++counts_[static_cast<std::size_t>(kind)] <= kKeptOfAKind) {
        kept_.push_back({line, kind, column, std::string(text::Left(text, 200))});
    }
}

void Findings::Clear() { *this = {}; }

std::vector<std::string> Findings::Report() const {
    std::vector<std::string> report;
    for (const Finding& finding : kept_) report.push_back(LineOf(finding));
    for (std::size_t kind = 0; kind < kKinds; ++kind) {
        if (counts_[kind] <= kKeptOfAKind) continue;
        report.push_back("Altre " + std::to_string(counts_[kind] - kKeptOfAKind) + " righe: " + kReasons[kind] + ".");
    }
    return report;
}

}  // namespace vlm
