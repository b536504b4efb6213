#include "XlsxFile.h"

#include <array>
#include <charconv>
#include <stdexcept>
#include <zip.h>

#include "workbooks/CellReference.h"

namespace vlm::test {

namespace {

const std::string kMain = "http://schemas.openxmlformats.org/spreadsheetml/2006/main";
const std::string kOffice = "http://schemas.openxmlformats.org/officeDocument/2006/relationships";
const std::string kPackage = "http://schemas.openxmlformats.org/package/2006";
const std::string kHead = "<?xml version=\"1.0\" encoding=\"UTF-8\" standalone=\"yes\"?>\n";

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
    return "<Relationship Id=\"" + id + "\" Type=\"" + kOffice + '/' + kind + "\" Target=\"" + target + "\"/>";
}

std::string Relationships(const std::string& relations) {
    return kHead + "<Relationships xmlns=\"" + kPackage + "/relationships\">" + relations + "</Relationships>";
}

std::string ContentTypes() {
    const std::string office = "application/vnd.openxmlformats-officedocument.spreadsheetml.";
    return kHead + "<Types xmlns=\"" + kPackage +
           "/content-types\"><Default Extension=\"rels\" "
           "ContentType=\"application/vnd.openxmlformats-package.relationships+xml\"/><Default Extension=\"xml\" "
           "ContentType=\"" +
           office + "worksheet+xml\"/><Override PartName=\"/xl/workbook.xml\" ContentType=\"" + office +
           "sheet.main+xml\"/><Override PartName=\"/xl/styles.xml\" ContentType=\"" + office +
           "styles+xml\"/><Override PartName=\"/xl/sharedStrings.xml\" ContentType=\"" + office +
           "sharedStrings+xml\"/></Types>";
}

std::string Styles(const std::vector<std::string>& codes, const std::vector<int>& builtIn) {
    std::string formats;
    std::string styles = "<xf numFmtId=\"0\"/><xf numFmtId=\"14\"/>";
    for (std::size_t i = 0; i < codes.size(); ++i) {
        const std::string id = std::to_string(164 + i);
        formats += "<numFmt numFmtId=\"" + id + "\" formatCode=\"" + Escaped(codes[i]) + "\"/>";
        styles += "<xf numFmtId=\"" + id + "\"/>";
    }
    for (const int format : builtIn) styles += "<xf numFmtId=\"" + std::to_string(format) + "\"/>";
    return kHead + "<styleSheet xmlns=\"" + kMain + "\"><numFmts>" + formats +
           "</numFmts><cellStyleXfs><xf numFmtId=\"14\"/></cellStyleXfs><cellXfs>" + styles + "</cellXfs></styleSheet>";
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
        return cell + " s=\"1\"><v>" + Plain(date->Serial() - (from1904_ ? 1462 : 0)) + "</v></c>";
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

XlsxFile& XlsxFile::Formats(const std::vector<std::string>& codes, const std::vector<int>& builtIn) {
    formats_ = codes;
    builtIn_ = builtIn;
    return *this;
}

XlsxFile& XlsxFile::From1904() {
    from1904_ = true;
    return *this;
}

std::map<std::string, std::string> XlsxFile::Parts() const {
    std::map<std::string, std::string> parts;
    std::string sheets;
    std::string relations =
        Relation("rIdStyles", "styles", "styles.xml") + Relation("rIdTexts", "sharedStrings", "/xl/sharedStrings.xml");
    for (std::size_t i = 0; i < sheets_.size(); ++i) {
        const std::string number = std::to_string(i + 1);
        sheets +=
            "<sheet name=\"" + Escaped(sheets_[i].first) + "\" sheetId=\"" + number + "\" r:id=\"rId" + number + "\"/>";
        relations += Relation("rId" + number, "worksheet", "worksheets/sheet" + number + ".xml");
        parts["xl/worksheets/sheet" + number + ".xml"] =
            kHead + "<worksheet xmlns=\"" + kMain + "\"><sheetData>" + sheets_[i].second + "</sheetData></worksheet>";
    }
    parts["[Content_Types].xml"] = ContentTypes();
    parts["_rels/.rels"] = Relationships(Relation("rId1", "officeDocument", "xl/workbook.xml"));
    parts["xl/workbook.xml"] = kHead + "<workbook xmlns=\"" + kMain + "\" xmlns:r=\"" + kOffice + "\"><workbookPr" +
                               (from1904_ ? " date1904=\"1\"" : "") + "/><sheets>" + sheets + "</sheets></workbook>";
    parts["xl/_rels/workbook.xml.rels"] = Relationships(relations);
    parts["xl/styles.xml"] = Styles(formats_, builtIn_);
    parts["xl/sharedStrings.xml"] = kHead + "<sst xmlns=\"" + kMain + "\">" + shared_ + "</sst>";
    for (const auto& [name, content] : parts_) parts[name] = content;
    for (const std::string& name : left_) parts.erase(name);
    return parts;
}

void XlsxFile::Write(const std::string& path) const { WriteZip(path, Parts()); }

void WriteZip(const std::string& path, const std::map<std::string, std::string>& parts) {
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
