#include "DemoClinicLists.h"

#include "values/CodePage1252.h"
#include "values/DateText.h"
#include "values/Utf8.h"

namespace vlm::host {

namespace {

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

}  // namespace

std::span<const DemoList> DemoLists() { return kLists; }

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

}  // namespace vlm::host
