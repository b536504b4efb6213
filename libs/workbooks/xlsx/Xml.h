#pragma once

#include <pugixml.hpp>
#include <span>
#include <string>
#include <string_view>

namespace vlm::files {

/// Writers choose the prefix of the sheet's names freely: elements are known by what follows it.
std::string_view LocalName(const char* name) noexcept;
inline bool Is(pugi::xml_node node, std::string_view local) noexcept { return LocalName(node.name()) == local; }

/// The first child of that name; a null node when there is none.
pugi::xml_node ChildOf(pugi::xml_node parent, std::string_view local) noexcept;
/// The texts directly inside the element.
std::string ContentOf(pugi::xml_node element);
/// "1" or "true".
bool IsTrue(std::string_view value) noexcept;
/// Digits only, nothing around them.
bool ReadWhole(std::string_view value, std::uint32_t& number) noexcept;

/// Parses in place. Throws WorkbookFault naming the part. Entities that a document declares are not replaced.
void ParseXml(pugi::xml_document& document, std::span<char> content, const std::string& part);

/// The text of an `si` or `is` element: its runs joined, phonetic guides left out, "_x000D_" turned into its character.
std::string RichText(pugi::xml_node item);
/// "_xHHHH_" turned into its character, everywhere.
std::string WithoutEscapes(std::string content);

}  // namespace vlm::files
