#pragma once

#include <map>
#include <string>
#include <string_view>

#include "ZipPackage.h"

namespace vlm::files {

/// What one part of a package refers to.
class Relations {
public:
    struct Relation {
        std::string kind;    // the last word of its type: "worksheet", "styles", ...
        std::string target;  // a part's name inside the package; empty for what lies outside
    };

    /// The relations of `part`; of the package itself when it is empty. A part may have none.
    Relations(ZipPackage& package, const std::string& part);

    /// Null when there is none.
    const Relation* WithId(const std::string& id) const noexcept;
    /// The target of the first relation of a kind, or "".
    std::string TargetOf(std::string_view kind) const;

private:
    std::map<std::string, Relation> relations_;
};

/// The name of the part that `target` means in a relation of `part`: "/a/b" from the package's root, "a/b" and "../b"
/// from the part's folder.
std::string ResolveTarget(std::string_view part, std::string_view target);

}  // namespace vlm::files
