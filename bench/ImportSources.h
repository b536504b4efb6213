#pragma once

#include <filesystem>
#include <string>

namespace vlm::bench {

/// Makes what the import is measured on: a clinic with 1,000,000 archive patients, the comuni, a template, and lists of
/// 10,000, 100,000 and 1,000,000 lines. Two lines of three are of the archive.
void WriteImportSources(const std::filesystem::path& folder);

std::string ListOf(const std::string& folder, long lines);
std::string TemplateOf(const std::string& folder);

}  // namespace vlm::bench
