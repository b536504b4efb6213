#include "Xml.h"

#include <charconv>
#include <cstdint>

#include "values/Utf8.h"
#include "workbooks/WorkbookFault.h"

namespace vlm::files {

namespace {

constexpr std::string_view kXmlBlanks = " \t\r\n";
constexpr std::size_t kEscape = 7;  // "_x000D_"

/// Blanks at the ends count only where the element says so.
std::string_view TrimBlanks(std::string_view content) noexcept {
    const std::size_t first = content.find_first_not_of(kXmlBlanks);
    if (first == std::string_view::npos) return {};
    return content.substr(first, content.find_last_not_of(kXmlBlanks) - first + 1);
}

void AppendRun(pugi::xml_node element, std::string& out) {
    const std::string content = ContentOf(element);
    const bool preserved = std::string_view(element.attribute("xml:space").value()) == "preserve";
    out += preserved ? std::string_view(content) : TrimBlanks(content);
}

/// The code in "_xHHHH_" at `at`, or nothing.
bool ReadEscape(std::string_view content, std::size_t at, std::uint16_t& code) noexcept {
    if (at + kEscape > content.size() || content[at] != '_' || content[at + 1] != 'x' || content[at + 6] != '_') {
        return false;
    }
    const char* const digits = content.data() + at + 2;
    const auto [end, error] = std::from_chars(digits, digits + 4, code, 16);
    return error == std::errc{} && end == digits + 4;
}

}  // namespace

std::string_view LocalName(const char* name) noexcept {
    const std::string_view whole = name;
    const std::size_t colon = whole.find(':');
    return colon == std::string_view::npos ? whole : whole.substr(colon + 1);
}

pugi::xml_node ChildOf(pugi::xml_node parent, std::string_view local) noexcept {
    for (const pugi::xml_node child : parent.children()) {
        if (Is(child, local)) return child;
    }
    return {};
}

std::string ContentOf(pugi::xml_node element) {
    std::string content;
    for (const pugi::xml_node child : element.children()) {
        if (child.type() == pugi::node_pcdata || child.type() == pugi::node_cdata) content += child.value();
    }
    return content;
}

bool IsTrue(std::string_view value) noexcept { return value == "1" || value == "true"; }

bool ReadWhole(std::string_view value, std::uint32_t& number) noexcept {
    const auto [end, error] = std::from_chars(value.data(), value.data() + value.size(), number);
    return error == std::errc{} && end == value.data() + value.size();
}

void ParseXml(pugi::xml_document& document, std::span<char> content, const std::string& part) {
    constexpr unsigned int kOptions = pugi::parse_default | pugi::parse_ws_pcdata;
    if (!document.load_buffer_inplace(content.data(), content.size(), kOptions)) {
        throw WorkbookFault("la parte " + part + " non è XML valido");
    }
}

std::string WithoutEscapes(std::string content) {
    std::size_t at = content.find("_x");
    if (at == std::string::npos) return content;
    std::string plain(content, 0, at);
    while (at < content.size()) {
        std::uint16_t code = 0;
        if (ReadEscape(content, at, code)) {
            text::Encode(code >= 0xD800 && code <= 0xDFFF ? text::kReplacement : char32_t{code}, plain);
            at += kEscape;
        } else {
            plain += content[at++];
        }
    }
    return plain;
}

std::string RichText(pugi::xml_node item) {
    std::string content;
    for (const pugi::xml_node child : item.children()) {
        if (Is(child, "t")) AppendRun(child, content);
        if (Is(child, "r")) AppendRun(ChildOf(child, "t"), content);
    }
    return WithoutEscapes(std::move(content));
}

}  // namespace vlm::files
