#include "DemoClinicImport.h"

#include <algorithm>
#include <fstream>
#include <nlohmann/json.hpp>
#include <optional>

#include "demo/DemoClinic.h"
#include "values/CodePage1252.h"
#include "values/DateText.h"
#include "values/Error.h"
#include "values/Number.h"
#include "values/Utf8.h"

namespace vlm::host {

namespace fs = std::filesystem;

namespace {

/// A person as a health authority lists them.
struct DemoListed {
    std::string code, surname, name, fiscalCode, town, street, telephone, exemption;
    std::string_view sex;
    std::optional<Date> birth, choice, expiry, suspension, from, to;
};

/// One column of a list: what it is called in a template, what stands in it, and where.
struct DemoListColumn {
    std::string_view key;
    std::string (*text)(const DemoListed&);
    int start = 0;   // fixed width: character from 1; workbook: column from 1
    int length = 0;  // fixed width only
};

/// A list of one format: the source in code page 1252, lines closed by CR LF, and the template that describes it.
struct DemoList {
    std::string_view templateName;  // "" for a format that the import knows
    std::string_view sourceName;    // "" for a format of which there is no sample
    char fileType;                  // 'D' delimited by ";", 'F' fixed width, 'E' workbook
    std::string_view remark;        // the template's first line
    std::span<const DemoListColumn> columns;
    std::string_view options = {};   // further lines of the template
    std::string_view headings = {};  // of the source
    bool capitals = false;
};

constexpr std::string_view kLineEnd = "\r\n";
constexpr char kDelimiter = ';';

template <std::string DemoListed::*Member>
std::string Text(const DemoListed& person) {
    return person.*Member;
}
std::string Sex(const DemoListed& person) { return std::string(person.sex); }
template <std::optional<Date> DemoListed::*Member>
std::string Day(const DemoListed& person) {
    return person.*Member ? text::DdMmYyyySlashes(*(person.*Member)) : std::string();
}
template <std::optional<Date> DemoListed::*Member>
std::string Digits(const DemoListed& person) {
    return person.*Member ? text::DdMmYyyy(*(person.*Member)) : std::string();
}
/// What an authority writes where there is no date.
template <std::optional<Date> DemoListed::*Member>
std::string DayOrZeros(const DemoListed& person) {
    return person.*Member ? Day<Member>(person) : "00/00/0000";
}

using P = DemoListed;

constexpr DemoListColumn kDelimitedColumns[] = {
    {"Codice", Text<&P::code>},       {"Cognome", Text<&P::surname>},
    {"Nome", Text<&P::name>},         {"Sesso", Sex},
    {"DataNascita", Day<&P::birth>},  {"CodiceFiscale", Text<&P::fiscalCode>},
    {"DataScelta", Day<&P::choice>},  {"Scadenza", Day<&P::expiry>},
    {"Comune", Text<&P::town>},       {"Indirizzo", Text<&P::street>},
    {"Telefono", Text<&P::telephone>}};

constexpr DemoListColumn kFixedColumns[] = {{"CodiceFiscale", Text<&P::fiscalCode>, 1, 16},
                                            {"Cognome", Text<&P::surname>, 17, 30},
                                            {"Nome", Text<&P::name>, 47, 30},
                                            {"DataNascita", Digits<&P::birth>, 77, 8},
                                            {"Sesso", Sex, 85, 1},
                                            {"Codice", Text<&P::code>, 86, 12},
                                            {"DataScelta", Digits<&P::choice>, 98, 8},
                                            {"Comune", Text<&P::town>, 106, 30},
                                            {"Indirizzo", Text<&P::street>, 136, 40}};

constexpr DemoListColumn kWorkbookColumns[] = {
    {"Cognome", Text<&P::surname>, 1},          {"Nome", Text<&P::name>, 2},   {"DataNascita", Day<&P::birth>, 3},
    {"CodiceFiscale", Text<&P::fiscalCode>, 4}, {"Comune", Text<&P::town>, 5}, {"Indirizzo", Text<&P::street>, 6}};

constexpr DemoListColumn kCataniaColumns[] = {{"Cognome", Text<&P::surname>, 10, 25},
                                              {"Nome", Text<&P::name>, 36, 25},
                                              {"DataNascita", DayOrZeros<&P::birth>, 62, 10},
                                              {"Sesso", Sex, 73, 1},
                                              {"CodiceFiscale", Text<&P::fiscalCode>, 75, 16},
                                              {"Codice", Text<&P::code>, 92, 11},
                                              {"DataScelta", DayOrZeros<&P::choice>, 104, 10},
                                              {"Scadenza", DayOrZeros<&P::expiry>, 115, 10},
                                              {"Sospensione", DayOrZeros<&P::suspension>, 126, 10},
                                              {"Indirizzo", Text<&P::street>, 148, 33},
                                              {"Comune", Text<&P::town>, 182, 19}};

constexpr DemoListColumn kExemptionColumns[] = {{"CodiceFiscale", Text<&P::fiscalCode>},
                                                {"Cognome", Text<&P::surname>},
                                                {"Nome", Text<&P::name>},
                                                {"Esenzione", Text<&P::exemption>},
                                                {"EsenzioneDataInizio", Day<&P::from>},
                                                {"EsenzioneDataScadenza", Day<&P::to>}};

constexpr DemoList kLists[] = {
    {"Elenco assistiti.ACF", "assistiti.txt", 'D', "Elenco degli assistiti, campi separati da punto e virgola",
     kDelimitedColumns},
    {"Assistiti a colonne.ACF", "assistiti-colonne.txt", 'F', "Elenco degli assistiti a colonne fisse", kFixedColumns,
     "[DATEFORMAT]=GGMMAAAA\r\n"},
    {"Foglio assistiti.ACF", "", 'E', "Elenco degli assistiti in un foglio elettronico", kWorkbookColumns,
     "[SHEET]=1\r\n"},
    {"", "catania.txt", 'F', "", kCataniaColumns, "",
     "ELENCO DEGLI ASSISTITI                                        NASCITA    S CODICE FISCALE   CODICE\r\n"
     "--------------------------------------------------------------------------------------------------\r\n",
     true},
    {"Esenti per reddito.ECF", "esenti.txt", 'D', "Esenti per reddito, solo pazienti gia' in archivio",
     kExemptionColumns, "[ONLYEXISTING]=S\r\n"}};

std::string Position(const DemoList& list, std::size_t ordinal) {
    const DemoListColumn& column = list.columns[ordinal];
    switch (list.fileType) {
        case 'D':
            return std::to_string(ordinal + 1);
        case 'F':
            return std::to_string(column.start) + "," + std::to_string(column.length);
        default:
            return std::string(1, static_cast<char>('A' + column.start - 1));
    }
}

std::string FileType(const DemoList& list) { return list.fileType == 'E' ? "E" : std::string("T") + list.fileType; }

/// The cell where its column stands in a line of fixed width; what is too long ends there.
void Place(std::string& line, const DemoListColumn& column, std::string_view cell) {
    const std::size_t before = text::Length(line);
    line.append(static_cast<std::size_t>(column.start) - 1 - before, ' ');
    const std::string_view shown = text::Left(cell, static_cast<std::size_t>(column.length));
    line.append(shown).append(static_cast<std::size_t>(column.length) - text::Length(shown), ' ');
}

std::string LineOf(const DemoList& list, const DemoListed& person) {
    std::string line;
    for (const DemoListColumn& column : list.columns) {
        const std::string cell = list.capitals ? text::ToUpper(column.text(person)) : column.text(person);
        if (list.fileType == 'F') {
            Place(line, column, cell);
        } else {
            if (&column != list.columns.data()) line += kDelimiter;
            line += cell;
        }
    }
    return line;
}

std::string TemplateText(const DemoList& list) {
    std::string content = std::string(list.remark) + std::string(kLineEnd);
    content += "[FILETYPE]=" + FileType(list) + std::string(kLineEnd);
    if (list.fileType == 'D') content += std::string("[DELIMITER]=") + kDelimiter + std::string(kLineEnd);
    content += list.options;
    for (std::size_t ordinal = 0; ordinal < list.columns.size(); ++ordinal) {
        content += "[" + std::string(list.columns[ordinal].key) + "]=" + Position(list, ordinal);
        content += kLineEnd;
    }
    return text::ToAnsi(content);
}

std::string SourceText(const DemoList& list, std::span<const DemoListed> persons) {
    std::string content(list.headings);
    for (const DemoListed& person : persons) content += LineOf(list, person) + std::string(kLineEnd);
    return text::ToAnsi(content);
}

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
    for (const DemoList& each : kLists) {
        if (!each.templateName.empty()) Write(templates / each.templateName, TemplateText(each));
        if (!each.sourceName.empty()) Write(sources / each.sourceName, SourceText(each, list));
    }
    Write(folder / kInstallationFolder / "SistemaTS.json", HealthCardAnswer(list));
}

}  // namespace vlm::host
