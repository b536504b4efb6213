#pragma once

#include <cstddef>
#include <optional>
#include <span>
#include <string>
#include <string_view>

#include "ZipPackage.h"

namespace vlm::files {

/// Cuts the elements of one name out of a large part, one after the other, so that no more than one of them is in
/// memory: the rows of a sheet, the texts of a workbook.
class ElementStream {
public:
    /// All names are local names. `container` is the element that holds the wanted ones; the root may be it.
    struct Shape {
        std::string_view root, container, element;
    };
    ElementStream(ZipPackage& package, const std::string& part, Shape shape);

    /// The next element's bytes, to be parsed in place, valid until the next call. Throws WorkbookFault when the part
    /// is cut off, is another kind of part or has an element above 16 MB.
    std::optional<std::span<char>> Next();

private:
    struct Tag {
        std::string_view name;
        bool closing = false;
        bool empty = false;
    };

    bool Fill();
    bool Has(std::size_t bytes);
    bool StartsWith(std::string_view text);
    void SkipPast(std::string_view text);
    bool NextTag(Tag& tag);
    void ReadTag(Tag& tag);
    /// True when the wanted element starts with this tag.
    bool Enters(const Tag& tag);
    void SkipElement();
    [[noreturn]] void Refuse(const std::string& what) const;

    ZipPackage::Part part_;
    std::string name_;
    Shape shape_;
    std::string buffer_;
    std::size_t at_ = 0;    // what is not yet looked at
    std::size_t keep_ = 0;  // from here on the bytes are still needed
    bool inElement_ = false;
    bool inContainer_ = false;
    bool rootSeen_ = false;
    bool rootClosed_ = false;
};

}  // namespace vlm::files
