#include "host/ClinicDatabase.h"

#include <algorithm>
#include <filesystem>

#include "platform/data/sqlite/SqliteConnection.h"
#include "platform/text/Number.h"
#include "platform/text/Utf8.h"

namespace vlm::host {

namespace fs = std::filesystem;

namespace {

constexpr std::string_view kPrefix = "Studio";
constexpr std::size_t kDigits = 4;

/// 0 for a file that is no clinic's database.
int ClinicOf(const fs::path& file) {
    const std::string stem = file.stem().string();
    if (file.extension() != ".sqlite" || stem.size() != kPrefix.size() + kDigits || !stem.starts_with(kPrefix)) {
        return 0;
    }
    return static_cast<int>(text::LeadingInteger(std::string_view(stem).substr(kPrefix.size())));
}

std::string NameOf(const std::string& dataFolder, int clinic) {
    try {
        const data::RecordsetPtr row =
            OpenClinic(dataFolder, clinic)
                ->Open("SELECT RagioneSociale, Nome FROM Aldra..Studi WHERE IDStudio = " + std::to_string(clinic));
        if (row->AtEnd()) return {};
        const std::string name(text::Trim(row->TextOf(0)));
        const std::string place(text::Trim(row->TextOf(1)));
        return name + (name.empty() || place.empty() ? "" : " ") + place;
    } catch (const std::exception&) {
        return {};  // the clinic opens without its name too
    }
}

}  // namespace

data::ConnectionPtr OpenClinic(const std::string& dataFolder, int clinic) {
    return data::SqliteConnection::Connect("Provider=SQLite;Data Source=\"" + dataFolder + "\";Initial Catalog=Studio" +
                                           text::FormatZeros(clinic, kDigits));
}

std::vector<ClinicEntry> ClinicsIn(const std::string& dataFolder) {
    std::vector<ClinicEntry> clinics;
    std::error_code error;
    for (const fs::directory_entry& file : fs::directory_iterator(dataFolder, error)) {
        if (const int number = ClinicOf(file.path())) clinics.push_back({number, NameOf(dataFolder, number)});
    }
    std::sort(clinics.begin(), clinics.end(),
              [](const ClinicEntry& left, const ClinicEntry& right) { return left.number < right.number; });
    return clinics;
}

}  // namespace vlm::host
