#include "readers/ImportTemplate.h"

#include <algorithm>
#include <array>

#include "files/LineReader.h"
#include "files/Paths.h"
#include "values/Error.h"
#include "values/Number.h"
#include "values/Utf8.h"
#include "workbooks/CellReference.h"

namespace vlm {

namespace {

constexpr std::string_view kFileTypeMark = "[FILETYPE]";

bool HoldsFileType(std::string_view line) { return text::ToUpper(line).find(kFileTypeMark) != std::string::npos; }

/// The mark is taken out as it is written in capitals only: a type line in small letters gives no known type.
std::string FileTypeOf(std::string_view line) {
    std::string rest(line);
    for (std::size_t at = rest.find(kFileTypeMark); at != std::string::npos; at = rest.find(kFileTypeMark, at)) {
        rest.erase(at, kFileTypeMark.size());
    }
    return std::string(text::Trim(text::Without(rest, '=')));
}

/// What a template may say, in the order in which a row is read. A template never says the postal code.
constexpr std::array<ElementColumn, 15> kTemplateColumns = {
    ElementColumn::Codice,
    ElementColumn::Cognome,
    ElementColumn::Nome,
    ElementColumn::Sesso,
    ElementColumn::DataNascita,
    ElementColumn::CodiceFiscale,
    ElementColumn::DataScelta,
    ElementColumn::Comune,
    ElementColumn::Indirizzo,
    ElementColumn::Scadenza,
    ElementColumn::Sospensione,
    ElementColumn::Telefono,
    ElementColumn::Esenzione,
    ElementColumn::EsenzioneDataInizio,
    ElementColumn::EsenzioneDataScadenza,
};

[[noreturn]] void RefusePosition(ElementColumn column, const std::string& position) {
    throw Error("La posizione '" + position + "' della chiave " + NameOf(column) + " del modello non è valida.");
}

/// A text that is no number reads as 0; a number beyond 32 bits is no place in any source.
int NumberIn(std::string_view value) {
    const double number = text::ParseNumber(value).value_or(0);
    return number >= INT32_MIN && number <= INT32_MAX ? text::ToInt32(number, "") : 0;
}

/// Every column of a template is set, those that are not there to "": a date only when there is one.
template <typename Place>
SourceFormat FormatOf(const ImportTemplate& source, SourceKind kind, CellRule dates, Place&& place) {
    SourceFormat format;
    format.kind = kind;
    for (const ElementColumn column : kTemplateColumns) {
        SourceColumn& added = format.columns.emplace_back();
        added = {column, 0, 0, IsDate(column) ? dates : CellRule::Text};
        const std::string& position = source.GetTemplateValue(NameOf(column));
        if (!position.empty()) place(added, position);
    }
    return format;
}

SourceFormat DelimitedFormatOf(const ImportTemplate& source) {
    SourceFormat format = FormatOf(
        source, SourceKind::Delimited, CellRule::LayoutDate,
        [](SourceColumn& column, const std::string& position) { column.place = std::max(NumberIn(position), 0); });
    for (SourceColumn& column : format.columns) {
        if (column.column == ElementColumn::Esenzione) column.rule = CellRule::ExemptionCode;
    }
    format.dateLayout = source.GetTemplateValue("DATEFORMAT");
    format.delimiter = source.GetTemplateValue("DELIMITER");
    format.progress = ProgressRule::Characters;
    format.needsFiscalCode = true;
    format.onlyExisting = source.GetTemplateValue("ONLYEXISTING") == "S";
    return format;
}

SourceFormat FixedFormatOf(const ImportTemplate& source) {
    SourceFormat format = FormatOf(source, SourceKind::FixedWidth, CellRule::LayoutDate,
                                   [](SourceColumn& column, const std::string& position) {
                                       const std::size_t comma = position.find(',');
                                       if (comma == std::string::npos) return;
                                       column.place = NumberIn(std::string_view(position).substr(0, comma));
                                       column.length = NumberIn(std::string_view(position).substr(comma + 1));
                                       if (column.place < 1 || column.length < 0)
                                           RefusePosition(column.column, position);
                                   });
    format.dateLayout = source.GetTemplateValue("DATEFORMAT");
    return format;
}

SourceFormat WorkbookFormatOf(const ImportTemplate& source) {
    SourceFormat format =
        FormatOf(source, SourceKind::Workbook, CellRule::Date, [](SourceColumn& column, const std::string& position) {
            const auto number = files::ColumnNumber(position);
            if (!number) RefusePosition(column.column, position);
            column.place = static_cast<int>(*number);
        });
    format.sheet = NumberIn(source.GetTemplateValue("SHEET"));
    for (const SourceColumn& column : format.columns) {
        if (column.column == ElementColumn::Cognome) format.presenceColumn = column.place;
    }
    if (format.presenceColumn == 0) throw Error("Nel modello manca la chiave Cognome.");
    return format;
}

bool EndsWithNoCase(std::string_view name, std::string_view end) {
    return name.size() > end.size() && text::EqualNoCase(name.substr(name.size() - end.size()), end);
}

}  // namespace

ImportTemplate ImportTemplate::Load(const std::string& path) {
    ImportTemplate loaded;
    files::LineReader reader(path);
    while (!reader.AtEnd()) loaded.TakeLine(reader.ReadLine());
    return loaded;
}

void ImportTemplate::TakeLine(std::string_view line) {
    if (HoldsFileType(line)) fileType_ = FileTypeOf(line);
    const std::size_t equals = line.find('=');
    if (line.empty() || line.front() != '[' || equals == std::string_view::npos) return;
    const std::string_view value = text::Trim(line.substr(equals + 1));
    if (value.empty()) return;
    const std::string key = text::Without(text::Without(text::Trim(line.substr(0, equals)), '['), ']');
    if (!values_.emplace(text::ToLower(key), value).second) {
        throw Error("La chiave " + key + " del modello è indicata più di una volta.");
    }
}

const std::string& ImportTemplate::GetTemplateValue(std::string_view key) const {
    static const std::string kNone;
    const auto found = values_.find(text::ToLower(key));
    return found == values_.end() ? kNone : found->second;
}

std::optional<SourceFormat> ImportTemplate::Format() const {
    if (fileType_ == "E") return WorkbookFormatOf(*this);
    if (fileType_ == "TF") return FixedFormatOf(*this);
    if (fileType_ == "TD") return DelimitedFormatOf(*this);
    return std::nullopt;
}

std::vector<std::string> TemplateFolder::Names(std::string_view extension) const {
    std::vector<std::string> names;
    for (std::string& file : files::FileNamesIn(path_)) {
        if (EndsWithNoCase(file, extension)) names.push_back(file.substr(0, file.size() - extension.size()));
    }
    return names;
}

std::string TemplateFolder::PathOf(const std::string& name, std::string_view extension) const {
    const std::string wanted = name + std::string(extension);
    const std::vector<std::string> there = files::FileNamesIn(path_);
    const auto exact = std::find(there.begin(), there.end(), wanted);
    const auto found = exact != there.end() ? exact : std::find_if(there.begin(), there.end(), [&](const auto& file) {
        return text::EqualNoCase(file, wanted);
    });
    return path_ + (found != there.end() ? *found : wanted);
}

}  // namespace vlm
