#pragma once

#include <string>

#include "frame/Library.h"

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

}  // namespace vlm
