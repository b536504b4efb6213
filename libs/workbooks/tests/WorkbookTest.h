#pragma once

#include <gtest/gtest.h>

#include "XlsxFile.h"
#include "detect/DetectingOpener.h"
#include "support/TempFolder.h"
#include "support/Words.h"
#include "values/Error.h"

namespace vlm::test {

/// A workbook that a library of somebody else's wrote.
inline std::string DataFile(const std::string& name) {
    return std::string(VLM_SOURCE_FOLDER) + "/libs/workbooks/tests/data/" + name;
}
/// What values.xls and values.xlsx show.
inline Lines ValuesShown() {
    return {"\"Cognome|\"Nato il|\"Età|\"Attivo", "\"D'Àrrigo & <figli>|@03/10/1954|#56,5|?Vero", "|||",
            "\"  Łódź 漢 𝄞  |@10/04/2011 06:00:00|#12345678901|?Falso", "\"x|#-7|#0|#123456"};
}

/// A cell's text with a mark of what it is: "text, #number, @date, ?truth value, "" for an empty cell.
inline std::string Marked(const files::SheetValue& value) {
    constexpr const char* kMarks[] = {"", "?", "#", "@", "\""};
    return kMarks[value.index()] + files::TextOf(value);
}

/// Every row up to the last one, its first `columns` cells joined by "|".
inline Lines DumpOf(const files::Worksheet& sheet, std::uint32_t columns) {
    Lines rows;
    for (std::uint32_t row = 1; row <= sheet.LastRow(); ++row) {
        std::string line;
        for (std::uint32_t column = 1; column <= columns; ++column) {
            line += (column > 1 ? "|" : "") + Marked(sheet.Cell(row, column));
        }
        rows.push_back(line);
    }
    return rows;
}

class WorkbookTest : public testing::Test {
protected:
    std::unique_ptr<files::Workbook> Open(const std::string& bytes) {
        WriteBytes(path_, bytes);
        return files::DetectingOpener().Open(path_);
    }
    std::unique_ptr<files::Workbook> Open(const XlsxFile& file) {
        file.Write(path_);
        return files::DetectingOpener().Open(path_);
    }
    template <typename File>
    Lines Read(const File& file, std::uint32_t columns) {
        return DumpOf(Open(file)->Sheet(1), columns);
    }
    /// Why a file is no workbook that can be read, after the first cells of every row of every sheet; "" when it is.
    template <typename File>
    std::string Fault(const File& file) {
        try {
            const auto workbook = Open(file);
            for (int number = 1; number <= workbook->WorksheetCount(); ++number) {
                const files::Worksheet& sheet = workbook->Sheet(number);
                for (std::uint32_t row = 1; row <= sheet.LastRow() && row <= 100; ++row) {
                    for (std::uint32_t column = 1; column <= 20; ++column) files::TextOf(sheet.Cell(row, column));
                }
            }
        } catch (const Error& error) {
            const std::string text = error.what(),
                              head = "Il file " + path_ + " non è una cartella di lavoro leggibile: ";
            EXPECT_NE(text.find(path_), std::string::npos) << text;
            return text.starts_with(head) ? text.substr(head.size(), text.size() - head.size() - 1) : text;
        }
        return {};
    }

    TempFolder folder_;
    const std::string path_ = folder_ / "pazienti.dat";  // the extension tells nothing
};

}  // namespace vlm::test
