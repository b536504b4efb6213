#include "XlsxFile.h"

#include <array>
#include <charconv>
#include <stdexcept>
#include <zip.h>

#include "workbooks/CellReference.h"

namespace vlm::test {

namespace {

std::string Escaped(const std::string& value) {
    std::string xml;
    for (const char c : value) xml += c == '&' ? "&amp;" : c == '<' ? "&lt;" : c == '"' ? "&quot;" : std::string(1, c);
    return xml;
}

std::string Plain(double number) {
    std::array<char, 40> buffer{};
    return {buffer.data(), std::to_chars(buffer.data(), buffer.data() + buffer.size(), number).ptr};
}

std::string Relation(const std::string& id, const std::string& kind, const std::string& target) {
    return "<Relationship Id=\"" + id + "\" Type=\"x/" + kind + "\" Target=\"" + target + "\"/>";
}

}  // namespace

XlsxFile& XlsxFile::Sheet(const std::string& name, const SheetRows& rows) {
    std::string xml;
    for (std::size_t row = 0; row < rows.size(); ++row) {
        const auto number = static_cast<std::uint32_t>(row + 1);
        xml += "<row r=\"" + std::to_string(number) + "\">";
        for (std::size_t column = 0; column < rows[row].size(); ++column) {
            xml += CellXml(rows[row][column], files::CellName({number, static_cast<std::uint32_t>(column + 1)}));
        }
        xml += "</row>";
    }
    return SheetXml(name, xml);
}

std::string XlsxFile::CellXml(const files::SheetValue& value, const std::string& place) {
    const std::string cell = "<c r=\"" + place + '"';
    if (const auto* text = std::get_if<std::string>(&value)) {
        shared_ += "<si><t xml:space=\"preserve\">" + Escaped(*text) + "</t></si>";
        return cell + " t=\"s\"><v>" + std::to_string(sharedCount_++) + "</v></c>";
    }
    if (const auto* number = std::get_if<double>(&value)) return cell + "><v>" + Plain(*number) + "</v></c>";
    if (const auto* date = std::get_if<Date>(&value)) {
        return cell + " s=\"1\"><v>" + Plain(date->Serial()) + "</v></c>";
    }
    if (const auto* truth = std::get_if<bool>(&value)) return cell + " t=\"b\"><v>" + (*truth ? "1" : "0") + "</v></c>";
    return {};
}

XlsxFile& XlsxFile::SheetXml(const std::string& name, const std::string& rows) {
    sheets_.emplace_back(name, rows);
    return *this;
}

XlsxFile& XlsxFile::Part(const std::string& name, const std::string& content) {
    parts_[name] = content;
    return *this;
}

XlsxFile& XlsxFile::Without(const std::string& name) {
    left_.push_back(name);
    return *this;
}

XlsxFile& XlsxFile::SharedXml(const std::string& items) {
    shared_ += items;
    for (std::size_t at = items.find("<si"); at != std::string::npos; at = items.find("<si", at + 1)) ++sharedCount_;
    return *this;
}

void XlsxFile::Write(const std::string& path) const {
    std::map<std::string, std::string> parts;
    std::string sheets, relations = Relation("rIdStyles", "styles", "styles.xml") +
                                    Relation("rIdTexts", "sharedStrings", "/xl/sharedStrings.xml");
    for (std::size_t i = 0; i < sheets_.size(); ++i) {
        const std::string number = std::to_string(i + 1), part = "worksheets/sheet" + number + ".xml";
        sheets += "<sheet name=\"" + Escaped(sheets_[i].first) + "\" r:id=\"rId" + number + "\"/>";
        relations += Relation("rId" + number, "worksheet", part);
        parts["xl/" + part] = "<worksheet><sheetData>" + sheets_[i].second + "</sheetData></worksheet>";
    }
    parts["_rels/.rels"] =
        "<Relationships>" + Relation("rId1", "officeDocument", "xl/workbook.xml") + "</Relationships>";
    parts["xl/workbook.xml"] = "<workbook><sheets>" + sheets + "</sheets></workbook>";
    parts["xl/_rels/workbook.xml.rels"] = "<Relationships>" + relations + "</Relationships>";
    parts["xl/styles.xml"] = "<styleSheet><cellXfs><xf numFmtId=\"0\"/><xf numFmtId=\"14\"/></cellXfs></styleSheet>";
    parts["xl/sharedStrings.xml"] = "<sst>" + shared_ + "</sst>";
    for (const auto& [name, content] : parts_) parts[name] = content;
    for (const std::string& name : left_) parts.erase(name);
    zip_t* const archive = zip_open(path.c_str(), ZIP_CREATE | ZIP_TRUNCATE, nullptr);
    if (archive == nullptr) throw std::runtime_error("no archive " + path);
    for (const auto& [name, content] : parts) {
        zip_source_t* const source = zip_source_buffer(archive, content.data(), content.size(), 0);
        if (zip_file_add(archive, name.c_str(), source, ZIP_FL_ENC_UTF_8) < 0) zip_source_free(source);
    }
    if (zip_close(archive) != 0) {
        zip_discard(archive);
        throw std::runtime_error("cannot write " + path);
    }
}

}  // namespace vlm::test
