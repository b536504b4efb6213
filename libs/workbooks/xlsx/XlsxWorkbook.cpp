#include <memory>
#include <pugixml.hpp>
#include <string>
#include <vector>

#include "ElementStream.h"
#include "Relations.h"
#include "SheetReader.h"
#include "Xml.h"
#include "ZipPackage.h"
#include "workbooks/CellStyles.h"
#include "workbooks/CellTable.h"
#include "workbooks/LazyWorkbook.h"
#include "workbooks/WorkbookFault.h"
#include "xlsx/OpenXlsx.h"

namespace vlm::files {

namespace {

constexpr const char* kUsualWorkbookPart = "xl/workbook.xml";

/// The relation of a sheet stands in an attribute whose prefix is free: "r:id".
std::string RelationIdOf(pugi::xml_node sheet) {
    for (const pugi::xml_attribute attribute : sheet.attributes()) {
        const std::string_view name = attribute.name();
        if (name.size() > 3 && name.ends_with(":id")) return attribute.value();
    }
    return {};
}

class XlsxWorkbook : public LazyWorkbook {
public:
    /// Throws WorkbookFault.
    explicit XlsxWorkbook(const std::string& path);

protected:
    std::unique_ptr<Worksheet> ReadSheet(std::size_t index) override;

private:
    void ReadWorkbook(const std::string& part);
    void AddSheet(pugi::xml_node sheet, const Relations& relations);
    void ReadStyles(const std::string& part);
    void ReadTexts();

    ZipPackage package_;
    std::vector<std::string> sheetParts_;
    CellStyles styles_;
    std::string textsPart_;
    std::shared_ptr<SharedTexts> texts_;  // null until the first sheet is read
};

XlsxWorkbook::XlsxWorkbook(const std::string& path) : LazyWorkbook(path), package_(path) {
    const std::string part = Relations(package_, "").TargetOf("officeDocument");
    ReadWorkbook(part.empty() ? kUsualWorkbookPart : part);
    SetWorksheetCount(sheetParts_.size());
}

void XlsxWorkbook::ReadWorkbook(const std::string& part) {
    std::string content = package_.Read(part);
    pugi::xml_document document;
    ParseXml(document, content, part);
    const pugi::xml_node root = document.document_element();
    if (!Is(root, "workbook")) throw WorkbookFault("la parte " + part + " non è una cartella di lavoro");
    styles_.CountFrom1904(IsTrue(ChildOf(root, "workbookPr").attribute("date1904").value()));
    const Relations relations(package_, part);
    for (const pugi::xml_node sheet : ChildOf(root, "sheets").children()) {
        if (Is(sheet, "sheet")) AddSheet(sheet, relations);
    }
    const std::string styles = relations.TargetOf("styles");
    if (!styles.empty()) ReadStyles(styles);
    textsPart_ = relations.TargetOf("sharedStrings");
}

void XlsxWorkbook::AddSheet(pugi::xml_node sheet, const Relations& relations) {
    const Relations::Relation* const relation = relations.WithId(RelationIdOf(sheet));
    if (relation == nullptr || relation->target.empty()) {
        throw WorkbookFault("manca il foglio \"" + std::string(sheet.attribute("name").value()) + "\"");
    }
    if (relation->kind == "worksheet") sheetParts_.push_back(relation->target);
}

void XlsxWorkbook::ReadStyles(const std::string& part) {
    std::string content = package_.Read(part);
    pugi::xml_document document;
    ParseXml(document, content, part);
    const pugi::xml_node root = document.document_element();
    std::uint32_t format = 0;
    for (const pugi::xml_node node : ChildOf(root, "numFmts").children()) {
        if (ReadWhole(node.attribute("numFmtId").value(), format)) {
            styles_.AddFormat(format, node.attribute("formatCode").value());
        }
    }
    for (const pugi::xml_node node : ChildOf(root, "cellXfs").children()) {
        if (!Is(node, "xf")) continue;
        styles_.AddStyle(ReadWhole(node.attribute("numFmtId").value(), format) ? format : 0);
    }
}

void XlsxWorkbook::ReadTexts() {
    auto texts = std::make_shared<SharedTexts>();
    if (!textsPart_.empty()) {
        ElementStream items(package_, textsPart_, {"sst", "sst", "si"});
        pugi::xml_document document;
        while (const auto item = items.Next()) {
            ParseXml(document, *item, textsPart_);
            texts->Add(RichText(document.document_element()));
        }
    }
    texts_ = std::move(texts);
}

std::unique_ptr<Worksheet> XlsxWorkbook::ReadSheet(std::size_t index) {
    if (!texts_) ReadTexts();
    auto table = std::make_unique<CellTable>(texts_);
    SheetReader reader(styles_, *table);
    ElementStream rows(package_, sheetParts_[index], {"worksheet", "sheetData", "row"});
    pugi::xml_document document;
    while (const auto row = rows.Next()) {
        ParseXml(document, *row, sheetParts_[index]);
        reader.ReadRow(document.document_element());
    }
    table->Finish();
    return table;
}

}  // namespace

std::unique_ptr<Workbook> OpenXlsx(const std::string& path) {
    return NamingFile(path, [&]() -> std::unique_ptr<Workbook> { return std::make_unique<XlsxWorkbook>(path); });
}

}  // namespace vlm::files
