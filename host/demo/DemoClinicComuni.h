#pragma once

#include <filesystem>
#include <initializer_list>
#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace vlm::host {

struct DemoComune {
    int id = 0;  // from 1, in the order of the list
    std::string name, istat, landRegistry, sigla;
};

/// The lines of the list that is built into the program, its heading first.
std::span<const std::string_view> EmbeddedComuni();

/// The Italian comuni (ISTAT, CC BY 3.0 IT).
class DemoClinicComuni {
public:
    /// From a file of the form of host/demo/data/comuni.csv; an empty path takes the list built into the program.
    /// Throws Error naming the file and the line that cannot be read.
    explicit DemoClinicComuni(const std::filesystem::path& csv);

    std::span<const DemoComune> All() const { return comuni_; }
    /// Throws Error naming the code when there is none.
    const DemoComune& ByIstat(std::string_view istat) const;
    /// Those whose ISTAT code begins with one of the province numbers.
    std::vector<const DemoComune*> OfProvinces(std::span<const std::string_view> provinces) const;

private:
    void Add(std::string_view line, std::string_view source);

    std::vector<DemoComune> comuni_;
};

}  // namespace vlm::host
