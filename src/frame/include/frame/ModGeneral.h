#pragma once

#include <cstdint>
#include <string>
#include <string_view>

#include "frame/Library.h"

/// Settings, small file-path tests and the lookups of the clinic's own identity. Each lookup reads the first row of one
/// forward-only row set; an error of the database reaches the caller.
namespace vlm {

/// Keys of the per-user settings that the library shares with the host.
namespace settings {
inline constexpr const char* kASLPath = "ASLPath";
inline constexpr const char* kASLPathPanoramico = "ASLPathPanoramico";
inline constexpr const char* kASLExportPrestazioni = "ASLExportPrestazioni";
/// Read only; "0" when absent.
inline constexpr const char* kOwner = "Owner";
}  // namespace settings

std::string GetSetting(const Library& library, const std::string& key, const std::string& defaultValue = {});
void SaveSetting(const Library& library, const std::string& key, const std::string& value);

/// True for a folder that is there; never fails.
bool IsDirectory(std::string_view path) noexcept;
/// True for a normal file that is there; never fails.
bool FileExists(std::string_view path) noexcept;
/// The folder, "\" unless the folder already ends with it, the name.
std::string PathCombine(std::string_view folder, std::string_view name);
/// What follows the last "\"; the whole path when it has none.
std::string FileNameOf(std::string_view path);

/// Menu item types (7 and 10) whose rows are numbered from the reserved range where the clinic owns the data.
bool IsOwnedMenuType(std::int32_t menuItemType) noexcept;
/// 1 to 4 for a month 1 to 12.
std::int16_t QuarterOfMonth(std::int16_t month) noexcept;

/// The clinic's number: the last four characters of the database's name, their leading digits; 0 when there are none.
std::int32_t GetIDStudio(const Library& library);
/// The clinic's ASL number; "" when not found.
std::string GetNumeroASL(const Library& library, data::Connection& connection);
/// The code of the clinic's ASL district; "" when not found.
std::string GetCodiceDistretto(const Library& library, data::Connection& connection);
/// The clinic's tariff region; 0 when not found. Clinic number 0 is the connection's own clinic.
std::int32_t GetIDRegioneTariffario(const Library& library, data::Connection& connection, std::int32_t idStudio);

/// One column of the first row as text; "" when there is no row, or no open connection. Table, column and condition
/// go into the statement as they are: values from outside must come quoted.
std::string LookupValue(data::Connection* connection, const std::string& table, const std::string& column,
                        const std::string& condition);

/// The next free key of a table: one above the highest positive key, or above one million where the menu item's type is
/// owned and the setting "Owner" is "0". A menu item of 0 asks for no such range.
double GetNewID(const Library& library, const std::string& table, const std::string& keyColumn,
                std::int32_t idMenuItem);

}  // namespace vlm
