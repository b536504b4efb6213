#include "DemoClinicComuni.h"

#include <algorithm>
#include <array>
#include <fstream>

#include "values/Error.h"

namespace vlm::host {

namespace {

std::string_view TakeField(std::string_view& line) {
    const std::size_t end = std::min(line.find(';'), line.size());
    const std::string_view field = line.substr(0, end);
    line.remove_prefix(std::min(end + 1, line.size()));
    return field;
}

}  // namespace

DemoClinicComuni::DemoClinicComuni(const std::filesystem::path& csv) {
    if (csv.empty()) {
        for (std::string_view line : EmbeddedComuni().subspan(1)) Add(line, "elenco dei comuni");
        return;
    }
    std::ifstream file(csv);
    std::string line;
    if (!std::getline(file, line)) throw Error("Impossibile leggere l'elenco dei comuni \"" + csv.string() + "\".");
    while (std::getline(file, line)) {
        if (line.ends_with('\r')) line.pop_back();
        if (!line.empty()) Add(line, csv.string());
    }
}

void DemoClinicComuni::Add(std::string_view line, std::string_view source) {
    std::string_view rest = line;
    DemoComune comune;
    comune.id = static_cast<int>(comuni_.size()) + 1;
    comune.name = TakeField(rest);
    comune.istat = TakeField(rest);
    comune.landRegistry = TakeField(rest);
    comune.sigla = TakeField(rest);
    if (comune.name.empty() || comune.istat.size() != 6 || comune.landRegistry.size() != 4)
        throw Error("Riga non valida in \"" + std::string(source) + "\": " + std::string(line));
    comuni_.push_back(std::move(comune));
}

const DemoComune& DemoClinicComuni::ByIstat(std::string_view istat) const {
    const auto found = std::find_if(comuni_.begin(), comuni_.end(), [&](const auto& c) { return c.istat == istat; });
    if (found == comuni_.end()) throw Error("Il comune con codice ISTAT " + std::string(istat) + " non è in elenco.");
    return *found;
}

std::vector<const DemoComune*> DemoClinicComuni::OfProvinces(std::span<const std::string_view> provinces) const {
    std::vector<const DemoComune*> found;
    for (const DemoComune& comune : comuni_)
        if (std::find(provinces.begin(), provinces.end(), comune.istat.substr(0, 3)) != provinces.end())
            found.push_back(&comune);
    return found;
}

}  // namespace vlm::host
