#include "SheetReader.h"

#include <charconv>
#include <cmath>

#include "Xml.h"
#include "values/Utf8.h"
#include "workbooks/WorkbookFault.h"

namespace vlm::files {

namespace {

[[noreturn]] void RefuseReference(std::string_view reference) {
    throw WorkbookFault("il riferimento di cella \"" + std::string(text::Left(reference, 20)) + "\" non è valido");
}

[[noreturn]] void RefuseCell(CellPlace place, const std::string& what) {
    throw WorkbookFault("la cella " + CellName(place) + ' ' + what);
}

SheetValue TruthOf(std::string_view content, CellPlace place) {
    if (IsTrue(content)) return true;
    if (content == "0" || content == "false") return false;
    RefuseCell(place, "non contiene un valore logico valido");
}

SheetValue IsoDateOf(const std::string& content) {
    if (const auto date = ParseIsoDate(content)) return *date;
    return content;
}

}  // namespace

std::uint32_t SheetReader::RowOf(pugi::xml_node row) const {
    std::uint32_t number = last_.row + 1;
    if (const pugi::xml_attribute declared = row.attribute("r")) {
        if (!ReadWhole(declared.value(), number) || number < 1 || number > kMaxRow) RefuseReference(declared.value());
        return number;
    }
    const std::string_view first = ChildOf(row, "c").attribute("r").value();
    const auto place = ParseCellReference(first);
    return place ? place->row : number;
}

CellPlace SheetReader::PlaceOf(pugi::xml_node cell) const {
    const pugi::xml_attribute reference = cell.attribute("r");
    if (!reference) return {last_.row, last_.column + 1};
    const auto place = ParseCellReference(reference.value());
    if (!place || place->row != last_.row) RefuseReference(reference.value());
    return *place;
}

void SheetReader::ReadRow(pugi::xml_node row) {
    last_ = {RowOf(row), 0};
    for (const pugi::xml_node cell : row.children()) {
        if (!Is(cell, "c")) continue;
        last_ = PlaceOf(cell);
        ReadCell(cell, last_);
    }
}

SheetValue SheetReader::NumberOf(std::string_view content, pugi::xml_node cell, CellPlace place) const {
    double number = 0;
    if (content.starts_with('+')) content.remove_prefix(1);
    const auto [end, error] = std::from_chars(content.data(), content.data() + content.size(), number);
    if (error != std::errc{} || end != content.data() + content.size() || !std::isfinite(number)) {
        RefuseCell(place, "non contiene un numero valido");
    }
    std::uint32_t style = 0;
    if (!ReadWhole(cell.attribute("s").value(), style)) return styles_.ValueOf(number, 0);
    return styles_.ValueOf(number, style);
}

void SheetReader::ReadCell(pugi::xml_node cell, CellPlace place) {
    const std::string_view type = cell.attribute("t").value();
    if (type == "inlineStr") return table_.Put(place, RichText(ChildOf(cell, "is")));
    const std::string content = ContentOf(ChildOf(cell, "v"));
    if (type == "str") return table_.Put(place, WithoutEscapes(content));
    const std::string_view plain = text::Trim(content);
    if (plain.empty()) return table_.Put(place, {});
    if (type == "s") {
        std::uint32_t number = 0;
        if (!ReadWhole(plain, number)) RefuseCell(place, "rimanda a un testo che non c'è");
        return table_.PutShared(place, number);
    }
    if (type.empty() || type == "n") return table_.Put(place, NumberOf(plain, cell, place));
    if (type == "b") return table_.Put(place, TruthOf(plain, place));
    if (type == "e") return table_.Put(place, std::string(ErrorText(plain)));
    if (type == "d") return table_.Put(place, IsoDateOf(std::string(plain)));
    RefuseCell(place, "è di un tipo non previsto");
}

}  // namespace vlm::files
