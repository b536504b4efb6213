#include "frame/ModGeneral.h"

#include "files/Paths.h"
#include "values/Number.h"
#include "values/Utf8.h"

namespace vlm {

namespace {

constexpr const char* kApplication = "Aldra";
constexpr const char* kSection = "Settings";
constexpr std::int32_t kReservedBase = 1000000;

/// The named column of the first row, Null when there is no row.
data::Value FirstValue(data::Connection& connection, const std::string& sql, std::string_view column) {
    const data::RecordsetPtr rows = connection.Open(sql);
    if (rows->AtEnd()) return {};
    return rows->ValueOf(rows->Ordinal(column));
}

}  // namespace

std::string GetSetting(const Library& library, const std::string& key, const std::string& defaultValue) {
    return library.Settings().Get(kApplication, kSection, key, defaultValue);
}

void SaveSetting(const Library& library, const std::string& key, const std::string& value) {
    library.Settings().Save(kApplication, kSection, key, value);
}

bool IsDirectory(std::string_view path) noexcept { return files::IsDirectory(path); }

bool FileExists(std::string_view path) noexcept { return files::IsFile(path); }

std::string PathCombine(std::string_view folder, std::string_view name) {
    std::string path(folder);
    if (path.empty() || path.back() != '\\') path += '\\';
    return path.append(name);
}

std::string FileNameOf(std::string_view path) {
    const std::size_t last = path.rfind('\\');
    return std::string(last == std::string_view::npos ? path : path.substr(last + 1));
}

bool IsOwnedMenuType(std::int32_t menuItemType) noexcept { return menuItemType == 7 || menuItemType == 10; }

std::int16_t QuarterOfMonth(std::int16_t month) noexcept { return static_cast<std::int16_t>((month + 2) / 3); }

std::int32_t GetIDStudio(const Library& library) {
    const std::string catalog = library.RequireConnection().InitialCatalog();
    return static_cast<std::int32_t>(text::LeadingInteger(text::Right(catalog, 4)));
}

std::string GetNumeroASL(const Library& library, data::Connection& connection) {
    return data::TextOf(FirstValue(connection,
                                   "SELECT Aldra..ASL.NumeroASL FROM Aldra..Studi"
                                   " INNER JOIN Aldra..ASL ON Aldra..Studi.IDASL = Aldra..ASL.IDASL"
                                   " WHERE Aldra..Studi.IDStudio = " +
                                       std::to_string(GetIDStudio(library)),
                                   "NumeroASL"));
}

std::string GetCodiceDistretto(const Library& library, data::Connection& connection) {
    return data::TextOf(
        FirstValue(connection,
                   "SELECT Aldra..DistrettoASL.Codice FROM Aldra..Studi"
                   " INNER JOIN Aldra..DistrettoASL ON Aldra..Studi.IDDistrettoASL = Aldra..DistrettoASL.IDDistrettoASL"
                   " WHERE Aldra..Studi.IDStudio = " +
                       std::to_string(GetIDStudio(library)),
                   "Codice"));
}

std::int32_t GetIDRegioneTariffario(const Library& library, data::Connection& connection, std::int32_t idStudio) {
    if (idStudio == 0) idStudio = GetIDStudio(library);
    if (idStudio <= 0) return 0;
    const data::Value region = FirstValue(
        connection, "SELECT IDRegioneTariffario FROM Aldra..Studi WHERE IDStudio = " + std::to_string(idStudio),
        "IDRegioneTariffario");
    return text::ToInt32(data::NumberOf(region), "IDRegioneTariffario");
}

std::string LookupValue(data::Connection* connection, const std::string& table, const std::string& column,
                        const std::string& condition) {
    if (connection == nullptr || !connection->IsOpen()) return {};
    return data::TextOf(FirstValue(*connection, "SELECT " + column + " FROM " + table + " WHERE " + condition, column));
}

double GetNewID(const Library& library, const std::string& table, const std::string& keyColumn,
                std::int32_t idMenuItem) {
    data::Connection& connection = library.RequireConnection();
    bool reserved = false;
    if (idMenuItem > 0) {
        const data::Value type = FirstValue(
            connection, "SELECT IDTipoMenuItem FROM MenuItem WHERE IDMenuItem = " + std::to_string(idMenuItem),
            "IDTipoMenuItem");
        if (IsOwnedMenuType(text::ToInt32(data::NumberOf(type), "IDTipoMenuItem"))) {
            reserved = GetSetting(library, settings::kOwner, "0") == "0";
        }
    }
    const std::int32_t base = reserved ? kReservedBase : 0;
    const data::RecordsetPtr rows = connection.Open("SELECT MAX(" + keyColumn + ") FROM " + table + " WHERE " +
                                                    keyColumn + " > " + std::to_string(base));
    const double highest = rows->AtEnd() ? 0 : rows->NumberOf(0);
    return highest > 0 ? highest + 1 : base + 1;
}

}  // namespace vlm
