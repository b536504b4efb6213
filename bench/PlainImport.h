#pragma once

#include <string>

/// The import as a plain loop would do it, to measure the library against: SQLite's own calls, getline, two maps.
namespace vlm::bench {

/// Reads a file line by line and cuts every line at ";"; the number of fields.
long SplitOnly(const std::string& path);
/// Loads the archive's codes and fiscal codes into two maps; how many there are.
long LoadMaps(const std::string& folder);
/// Loads the maps, reads the list, looks every line up and keeps all of it; how many lines were matched.
long ImportWithMaps(const std::string& folder, const std::string& path);

}  // namespace vlm::bench
