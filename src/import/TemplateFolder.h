#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace vlm {

/// The folder of the clinic's template files, below the host's installation folder.
class TemplateFolder {
public:
    static constexpr std::string_view kPatientLists = ".ACF";
    static constexpr std::string_view kExemptionLists = ".ECF";

    explicit TemplateFolder(const std::string& installFolder) : path_(installFolder + "\\Import\\") {}

    /// Names without extension of the templates of one kind, in the folder's alphabetical order.
    std::vector<std::string> Names(std::string_view extension) const;
    /// The path of a template, whether or not it is there. Where the machine tells small letters from capitals the
    /// file's own spelling counts.
    std::string PathOf(const std::string& name, std::string_view extension) const;

private:
    std::string path_;
};

}  // namespace vlm
