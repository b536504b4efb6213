#include <cstdint>
#include <memory>
#include <string>
#include <vector>

#include "BiffRecords.h"
#include "CompoundFile.h"
#include "LittleEndian.h"
#include "XlsSheetReader.h"
#include "workbooks/CellStyles.h"
#include "workbooks/CellTable.h"
#include "workbooks/LazyWorkbook.h"
#include "xls/OpenXls.h"

namespace vlm::files {

namespace {

constexpr std::uint16_t kVersion5 = 0x0500;
constexpr std::uint16_t kVersion8 = 0x0600;
constexpr std::uint8_t kWorksheet = 0;  // not a chart, not a sheet of macros

constexpr const char* kLocked = "è protetto da una password";

std::string WorkbookStream(const std::string& path) {
    const CompoundFile file(path);
    if (auto stream = file.Stream("Workbook")) return std::move(*stream);
    if (auto stream = file.Stream("Book")) return std::move(*stream);
    throw WorkbookFault(file.Stream("EncryptedPackage") ? kLocked : "non contiene fogli");
}

bool IsKnownCodePage(std::uint16_t codePage) noexcept {
    return codePage == 1252 || codePage == 0x8001 || codePage == 367 || codePage == 1200;
}

/// Versions 5 and 8 of the binary format.
class XlsWorkbook : public LazyWorkbook {
public:
    /// Throws WorkbookFault.
    explicit XlsWorkbook(const std::string& path);

protected:
    std::unique_ptr<Worksheet> ReadSheet(std::size_t index) override;

private:
    void ReadGlobals();
    void ReadVersion(std::string_view data);
    void ReadGlobal(const BiffRecord& record, BiffRecords& records);
    void AddFormat(const BiffRecord& record);

    std::string stream_;
    bool unicode_ = true;
    std::uint16_t codePage_ = 1252;
    CellStyles styles_;
    std::shared_ptr<SharedTexts> texts_ = std::make_shared<SharedTexts>();
    std::vector<std::uint32_t> sheetOffsets_;
    std::size_t bytesRead_ = 0;  // by all sheets so far
};

XlsWorkbook::XlsWorkbook(const std::string& path) : LazyWorkbook(path), stream_(WorkbookStream(path)) {
    ReadGlobals();
    SetWorksheetCount(sheetOffsets_.size());
}

void XlsWorkbook::ReadVersion(std::string_view data) {
    const std::uint16_t version = Read16(data, 0);
    if (version != kVersion5 && version != kVersion8) throw WorkbookFault("la sua versione non è prevista");
    unicode_ = version == kVersion8;
}

void XlsWorkbook::ReadGlobals() {
    BiffRecords records(stream_, 0);
    const BiffRecord first = records.Next();
    if (first.type != BiffType::StartOfPart) throw WorkbookFault("il file è incompleto o danneggiato");
    ReadVersion(first.data);
    for (BiffRecord record = records.Next(); record.type != BiffType::EndOfPart; record = records.Next()) {
        ReadGlobal(record, records);
    }
    if (!unicode_ && !IsKnownCodePage(codePage_)) {
        throw WorkbookFault("la codifica dei caratteri " + std::to_string(codePage_) + " non è prevista");
    }
}

void XlsWorkbook::ReadGlobal(const BiffRecord& record, BiffRecords& records) {
    const std::string_view data = record.data;
    switch (record.type) {
        case BiffType::FilePass:
            throw WorkbookFault(kLocked);
        case BiffType::CodePage:
            codePage_ = Read16(data, 0);
            return;
        case BiffType::DateMode:
            return styles_.CountFrom1904(Read16(data, 0) != 0);
        case BiffType::BoundSheet:
            if (Read8(data, 5) == kWorksheet) sheetOffsets_.push_back(Read32(data, 0));
            return;
        case BiffType::Format:
            return AddFormat(record);
        case BiffType::Xf:
            return styles_.AddStyle(Read16(data, 2));
        case BiffType::SharedTexts:
            return ReadSharedTexts(records.WithContinuations(record), *texts_);
        default:
            return;
    }
}

void XlsWorkbook::AddFormat(const BiffRecord& record) {
    BiffText code({record.data}, unicode_);
    code.Skip(2);
    styles_.AddFormat(Read16(record.data, 0), unicode_ ? code.ReadLong() : code.ReadShort());
}

std::unique_ptr<Worksheet> XlsWorkbook::ReadSheet(std::size_t index) {
    auto table = std::make_unique<CellTable>(texts_);
    BiffRecords records(stream_, sheetOffsets_[index]);
    XlsSheetReader(styles_, unicode_, *table).Read(records);
    // A list of sheets that all name one place would otherwise make a small file a large one.
    bytesRead_ += records.Offset() - sheetOffsets_[index];
    if (bytesRead_ > stream_.size()) throw WorkbookFault("i suoi fogli si sovrappongono");
    table->Finish();
    return table;
}

}  // namespace

std::unique_ptr<Workbook> OpenXls(const std::string& path) {
    return NamingFile(path, [&]() -> std::unique_ptr<Workbook> { return std::make_unique<XlsWorkbook>(path); });
}

}  // namespace vlm::files
