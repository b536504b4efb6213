#include "ClinicDatabase.h"

#include <algorithm>
#include <filesystem>

#include "databases/OdbcServer.h"
#include "sqlite/SqliteConnection.h"
#include "values/Number.h"
#include "values/Utf8.h"

namespace vlm::host {

namespace fs = std::filesystem;

namespace {

constexpr std::string_view kPrefix = "Studio";
constexpr std::size_t kDigits = 4;

/// 0 for a database that is no clinic's.
int ClinicOf(const std::string& database) {
    if (database.size() != kPrefix.size() + kDigits || !database.starts_with(kPrefix)) return 0;
    return static_cast<int>(text::LeadingInteger(std::string_view(database).substr(kPrefix.size())));
}

data::ConnectionPtr OpenFolder(const std::string& dataFolder, int clinic, int waitSeconds) {
    return data::SqliteConnection::Connect("Provider=SQLite;Data Source=\"" + dataFolder +
                                           "\";Initial Catalog=" + ClinicDatabaseName(clinic) +
                                           ";Busy Timeout=" + std::to_string(waitSeconds * 1000));
}

/// The clinic's name from two columns of the current row.
std::string NameOf(const data::Recordset& row, int first) {
    const std::string name(text::Trim(row.TextOf(first)));
    const std::string place(text::Trim(row.TextOf(first + 1)));
    return name + (name.empty() || place.empty() ? "" : " ") + place;
}

std::string NameOf(const std::string& dataFolder, int clinic) {
    try {
        const data::RecordsetPtr row =
            OpenFolder(dataFolder, clinic, 0)
                ->Open("SELECT RagioneSociale, Nome FROM Aldra..Studi WHERE IDStudio = " + std::to_string(clinic));
        return row->AtEnd() ? std::string() : NameOf(*row, 0);
    } catch (const std::exception&) {
        return {};  // the clinic opens without its name too
    }
}

}  // namespace

std::string ClinicDatabaseName(int clinic) { return std::string(kPrefix) + text::FormatZeros(clinic, kDigits); }

int ChosenClinic(const HostOptions& options) {
    if (options.clinic) return *options.clinic;
    const int named = options.odbcText.empty() ? 0 : ClinicOf(DatabaseOf(options.odbcText));
    return named == 0 ? kUsualClinic : named;
}

/// On a server the clinic that was asked for counts before the one that the text names.
data::ConnectionPtr OpenClinic(const HostOptions& options) {
    if (options.odbcText.empty()) return OpenFolder(options.dataFolder, ChosenClinic(options), options.waitSeconds);
    const bool named = !options.clinic && !DatabaseOf(options.odbcText).empty();
    return OpenOdbc(options.odbcText, named ? std::string() : ClinicDatabaseName(ChosenClinic(options)));
}

std::vector<ClinicEntry> ClinicsOnServer(const std::string& odbcText) {
    const data::ConnectionPtr master = OpenOdbc(odbcText, "Aldra");
    std::vector<ClinicEntry> clinics;
    for (const data::RecordsetPtr row =
             master->Open("SELECT IDStudio, RagioneSociale, Nome FROM Studi ORDER BY IDStudio");
         !row->AtEnd(); row->MoveNext()) {
        clinics.push_back({row->Int32Of(0), NameOf(*row, 1)});
    }
    return clinics;
}

std::vector<ClinicEntry> ClinicsIn(const std::string& dataFolder) {
    std::vector<ClinicEntry> clinics;
    std::error_code error;
    for (const fs::directory_entry& file : fs::directory_iterator(dataFolder, error)) {
        if (const int number = file.path().extension() == ".sqlite" ? ClinicOf(file.path().stem().string()) : 0)
            clinics.push_back({number, NameOf(dataFolder, number)});
    }
    std::sort(clinics.begin(), clinics.end(),
              [](const ClinicEntry& left, const ClinicEntry& right) { return left.number < right.number; });
    return clinics;
}

}  // namespace vlm::host
