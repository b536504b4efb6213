#pragma once

#include <memory>
#include <string>
#include <vector>

#include "detect/DetectingOpener.h"
#include "values/Error.h"
#include "workbooks/Workbook.h"

namespace vlm::test {

/// The folder of the sources.
inline constexpr const char* kSourceFolder = VLM_SOURCE_FOLDER;

/// A workbook that a library of somebody else's wrote.
inline std::string DataFile(const std::string& name) {
    return std::string(kSourceFolder) + "/libs/workbooks/tests/data/" + name;
}
/// What values.xls and values.xlsx show.
inline std::vector<std::string> ValuesShown() {
    return {"\"Cognome|\"Nato il|\"Età|\"Attivo", "\"D'Àrrigo & <figli>|@03/10/1954|#56,5|?Vero", "|||",
            "\"  Łódź 漢 𝄞  |@10/04/2011 06:00:00|#12345678901|?Falso", "\"x|#-7|#0|#123456"};
}

inline std::unique_ptr<files::Workbook> OpenedWorkbook(const std::string& path) {
    return files::DetectingOpener().Open(path);
}

/// A cell's text with a mark of what it is: "text, #number, @date, ?truth value, "" for an empty cell.
inline std::string Marked(const files::SheetValue& value) {
    constexpr const char* kMarks[] = {"", "?", "#", "@", "\""};
    return kMarks[value.index()] + files::TextOf(value);
}

/// Every row up to the last one, its first `columns` cells joined by "|".
inline std::vector<std::string> DumpOf(const files::Worksheet& sheet, std::uint32_t columns) {
    std::vector<std::string> rows;
    for (std::uint32_t row = 1; row <= sheet.LastRow(); ++row) {
        std::string line;
        for (std::uint32_t column = 1; column <= columns; ++column) {
            line += (column > 1 ? "|" : "") + Marked(sheet.Cell(row, column));
        }
        rows.push_back(line);
    }
    return rows;
}

/// Opens a file and reads the first cells of every row of every sheet. The message of the error, or "".
inline std::string FaultOf(const std::string& path) {
    try {
        const auto workbook = OpenedWorkbook(path);
        for (int number = 1; number <= workbook->WorksheetCount(); ++number) {
            const files::Worksheet& sheet = workbook->Sheet(number);
            for (std::uint32_t row = 1; row <= sheet.LastRow() && row <= 100; ++row) {
                for (std::uint32_t column = 1; column <= 20; ++column) files::TextOf(sheet.Cell(row, column));
            }
        }
    } catch (const Error& error) {
        return error.what();
    }
    return {};
}

inline std::string Unreadable(const std::string& path, const std::string& reason) {
    return "Il file " + path + " non è una cartella di lavoro leggibile: " + reason + ".";
}

}  // namespace vlm::test
