#include "PlainImport.h"

#include <fstream>
#include <sqlite3.h>
#include <stdexcept>
#include <unordered_map>
#include <vector>

namespace vlm::bench {

namespace {

void Split(const std::string& line, std::vector<std::string>& fields) {
    fields.clear();
    std::size_t start = 0;
    for (std::size_t end = line.find(';'); end != std::string::npos; end = line.find(';', start)) {
        fields.push_back(line.substr(start, end - start));
        start = end + 1;
    }
    fields.push_back(line.substr(start));
    if (fields.back().ends_with('\r')) fields.back().pop_back();
}

struct Archive {
    std::unordered_map<std::string, int> byCode;
    std::unordered_map<std::string, int> byFiscalCode;
};

Archive Load(const std::string& folder) {
    sqlite3* database = nullptr;
    sqlite3_stmt* rows = nullptr;
    if (sqlite3_open((folder + "/Studio0012.sqlite").c_str(), &database) != SQLITE_OK ||
        sqlite3_prepare_v2(database,
                           "SELECT IDPaziente, NumTesseraSanitaria, NumAssistito, CodiceFiscale FROM Paziente", -1,
                           &rows, nullptr) != SQLITE_OK) {
        throw std::runtime_error(sqlite3_errmsg(database));
    }
    Archive archive;
    while (sqlite3_step(rows) == SQLITE_ROW) {
        const int patient = sqlite3_column_int(rows, 0);
        for (const int column : {1, 2}) {
            const auto* code = reinterpret_cast<const char*>(sqlite3_column_text(rows, column));
            if (code != nullptr) archive.byCode.emplace(code, patient);
        }
        const auto* fiscalCode = reinterpret_cast<const char*>(sqlite3_column_text(rows, 3));
        if (fiscalCode != nullptr) archive.byFiscalCode.emplace(fiscalCode, patient);
    }
    sqlite3_finalize(rows);
    sqlite3_close(database);
    return archive;
}

struct Element {
    std::vector<std::string> fields;
    int patient = 0;
};

}  // namespace

long SplitOnly(const std::string& path) {
    std::ifstream file(path, std::ios::binary);
    std::vector<std::string> fields;
    long count = 0;
    for (std::string line; std::getline(file, line);) {
        Split(line, fields);
        count += static_cast<long>(fields.size());
    }
    return count;
}

long LoadMaps(const std::string& folder) {
    const Archive archive = Load(folder);
    return static_cast<long>(archive.byCode.size() + archive.byFiscalCode.size());
}

long ImportWithMaps(const std::string& folder, const std::string& path) {
    const Archive archive = Load(folder);
    std::ifstream file(path, std::ios::binary);
    std::vector<Element> elements;
    long matched = 0;
    for (std::string line; std::getline(file, line);) {
        Element& element = elements.emplace_back();
        Split(line, element.fields);
        auto found = archive.byCode.find(element.fields[0]);
        if (found == archive.byCode.end()) {
            const auto byFiscalCode = archive.byFiscalCode.find(element.fields[5]);
            element.patient = byFiscalCode == archive.byFiscalCode.end() ? 0 : byFiscalCode->second;
        } else {
            element.patient = found->second;
        }
        if (element.patient != 0) ++matched;
    }
    return matched;
}

}  // namespace vlm::bench
