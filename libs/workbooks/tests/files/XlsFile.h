#pragma once

#include <cstdint>
#include <string>
#include <utility>
#include <vector>

#include "XlsxFile.h"

namespace vlm::test {

/// Numbers in the byte order of the file.
std::string Le16(std::uint32_t value);
std::string Le32(std::uint32_t value);
std::string LeDouble(double value);

/// One record of a binary workbook.
std::string BiffRecordOf(std::uint16_t type, const std::string& data);

/// What an xls workbook is like beside its cells.
struct XlsOptions {
    bool from1904 = false;
    bool version5 = false;  // the version before: texts are bytes of code page 1252
    bool mini = false;      // leaves the stream as short as it is, so that it lies in the file's mini stream
    std::size_t textRecordSize = 8224;      // texts of the list go on in a further record after so many bytes
    std::vector<std::string> formats = {};  // style n + 2 has the n-th; style 0 is general, style 1 the built-in date
};

/// An xls workbook in the making, in a compound file that also holds a folder with a "Workbook" of somebody else's.
class XlsFile {
public:
    explicit XlsFile(XlsOptions options = {}) : options_(std::move(options)) {}

    /// Adds a sheet of values: shared texts, whole numbers in four bytes, others in eight, dates in style 1.
    XlsFile& Sheet(const std::string& name, const SheetRows& rows);
    /// Adds a sheet of records; `kind` 0 is a sheet of cells, 2 a chart.
    XlsFile& SheetRecords(const std::string& name, const std::string& records, std::uint8_t kind = 0);
    /// Further records for the workbook itself.
    XlsFile& Global(const std::string& records);
    /// The workbook's records.
    std::string Stream() const;
    /// The whole file.
    std::string Bytes() const;
    void Write(const std::string& path) const;

private:
    std::string CellRecord(const files::SheetValue& value, std::uint32_t row, std::uint32_t column);
    std::string TextList() const;
    std::string SheetList(const std::vector<std::size_t>& offsets) const;
    std::string Opening(std::uint16_t kind) const;

    struct SheetPart {
        std::string name;
        std::string records;
        std::uint8_t kind;
    };
    std::vector<SheetPart> sheets_;
    std::vector<std::string> texts_;
    std::string globals_;
    XlsOptions options_;
};

/// A compound file of one stream of that name in its root folder.
std::string CompoundFileOf(const std::string& name, const std::string& stream);

}  // namespace vlm::test
