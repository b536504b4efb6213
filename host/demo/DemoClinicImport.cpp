#include "demo/DemoClinicImport.h"

#include <algorithm>
#include <fstream>
#include <nlohmann/json.hpp>

#include "DemoClinicLists.h"
#include "values/Error.h"
#include "values/Number.h"

namespace vlm::host {

namespace fs = std::filesystem;

namespace {

constexpr std::size_t kKnown = 27, kNew = 13;                     // persons of a list
constexpr std::size_t kAsked = 6;                                 // archive patients in the health-card system's answer
constexpr int kUpToAge = 6, kFromAge = 65;                        // E01
constexpr std::string_view kOtherCodes[] = {"E02", "E3", "E05"};  // authorities also write E3 for E03

void Write(const fs::path& file, const std::string& content) {
    std::ofstream out(file, std::ios::binary);
    if (!out.write(content.data(), static_cast<std::streamsize>(content.size())).flush()) {
        throw Error("Impossibile scrivere il file \"" + file.string() + "\".");
    }
}

class Lists {
public:
    Lists(const DemoClinicComuni& comuni, Date today) : comuni_(comuni), today_(today) {}

    DemoListed Known(const DemoPatient& patient, std::size_t place) const {
        DemoListed listed = Person(patient);
        listed.code = patient.assistedNumber;
        const bool moved = place % 3 == 0;
        listed.street = (moved ? "Via Etnea, " : "Via Roma, ") + text::FormatInteger(patient.id, false);
        return listed;
    }
    DemoListed New(const DemoPatient& patient, std::size_t place) const {
        DemoListed listed = Person(patient);
        listed.code = patient.numeroASL + text::FormatZeros(900000 + static_cast<int>(place), 7);
        listed.street = "Corso dei Mille, " + text::FormatInteger(static_cast<int>(place) + 1, false);
        listed.telephone = "091" + text::FormatZeros(6100000 + static_cast<int>(place) * 137, 7);
        if (place % 4 == 0) listed.expiry = Date(today_.Serial() + 365);
        return listed;
    }
    /// An exemption that fits the person's age; every seventh person gets one that does not.
    void Exempt(DemoListed& listed, std::size_t place) const {
        const Date::Civil now = today_.ToCivil();
        const int age = now.year - listed.birth->ToCivil().year;
        const bool byAge = age <= kUpToAge || age >= kFromAge;
        listed.exemption = byAge != (place % 7 == 6) ? "E01" : kOtherCodes[place % std::size(kOtherCodes)];
        listed.from = *Date::FromYmd(now.year, 1, 1);
        listed.to = *Date::FromYmd(now.year, 12, 31);
    }

private:
    DemoListed Person(const DemoPatient& patient) const {
        DemoListed listed;
        listed.surname = patient.surname;
        listed.name = patient.name;
        listed.fiscalCode = patient.fiscalCode;
        listed.sex = patient.sex;
        listed.birth = patient.birth;
        listed.choice = patient.choice;
        listed.town = comuni_.All()[static_cast<std::size_t>(patient.homeComune) - 1].name;
        return listed;
    }

    const DemoClinicComuni& comuni_;
    Date today_;
};

std::vector<DemoListed> ListOf(const Lists& lists, std::span<const DemoPatient> archive,
                               std::span<const DemoPatient> newcomers) {
    std::vector<DemoListed> list;
    const std::size_t step = std::max<std::size_t>(archive.size() / kKnown, 1);
    for (std::size_t at = 0; at < archive.size() && list.size() < kKnown; at += step) {
        list.push_back(lists.Known(archive[at], list.size()));
    }
    std::size_t place = 0;
    for (const DemoPatient& one : newcomers) {
        const bool known = std::any_of(archive.begin(), archive.end(),
                                       [&](const DemoPatient& each) { return each.fiscalCode == one.fiscalCode; });
        if (!known && place < kNew) list.push_back(lists.New(one, place++));
    }
    return list;
}

/// What the health-card system answers: persons of the archive, the first ones with exemptions, and new ones.
std::string HealthCardAnswer(std::span<const DemoListed> list) {
    nlohmann::ordered_json answer = {{"error", false}, {"errors", nlohmann::ordered_json::array()}};
    auto& persons = answer["persons"] = nlohmann::ordered_json::array();
    for (std::size_t at = 0; at < list.size(); ++at) {
        if (at >= kAsked && at + 2 < list.size()) continue;
        const DemoListed& one = list[at];
        nlohmann::ordered_json person = {
            {"fiscalCode", one.fiscalCode}, {"surname", one.surname}, {"firstName", one.name}};
        person["exemptions"] = nlohmann::ordered_json::array();
        if (at < kAsked) {
            person["exemptions"].push_back({{"code", one.exemption == "E3" ? "E03" : one.exemption},
                                            {"start", IsoDate(*one.from) + "T00:00:00"},
                                            {"end", IsoDate(*one.to) + "T23:00:00"}});
        }
        persons.push_back(std::move(person));
    }
    return answer.dump(2) + "\n";
}

}  // namespace

void WriteImportFiles(const fs::path& folder, const DemoClinicComuni& comuni, std::span<const DemoPatient> archive,
                      std::span<const DemoPatient> newcomers, Date today) {
    const Lists lists(comuni, today);
    std::vector<DemoListed> list = ListOf(lists, archive, newcomers);
    for (std::size_t place = 0; place < list.size(); ++place) lists.Exempt(list[place], place);

    const fs::path templates = folder / kInstallationFolder / "Import", sources = folder / kSourcesFolder;
    fs::create_directories(templates);
    fs::create_directories(sources);
    for (const DemoList& each : DemoLists()) {
        if (!each.templateName.empty()) Write(templates / each.templateName, TemplateText(each));
        if (!each.sourceName.empty()) Write(sources / each.sourceName, SourceText(each, list));
    }
    Write(folder / kInstallationFolder / "SistemaTS.json", HealthCardAnswer(list));
}

}  // namespace vlm::host
