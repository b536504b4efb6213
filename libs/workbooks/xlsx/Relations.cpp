#include "Relations.h"

#include <algorithm>

#include "Xml.h"

namespace vlm::files {

namespace {

std::string FolderOf(std::string_view part) {
    const std::size_t slash = part.rfind('/');
    return slash == std::string_view::npos ? std::string() : std::string(part.substr(0, slash));
}

std::string RelationsPart(const std::string& part) {
    const std::string folder = FolderOf(part);
    const std::string name = folder.empty() ? part : part.substr(folder.size() + 1);
    return (folder.empty() ? "" : folder + '/') + "_rels/" + name + ".rels";
}

}  // namespace

std::string ResolveTarget(std::string_view part, std::string_view target) {
    std::string wanted(target);
    std::replace(wanted.begin(), wanted.end(), '\\', '/');
    std::string path = wanted.starts_with('/') ? std::string() : FolderOf(part);
    for (std::size_t at = 0; at < wanted.size();) {
        const std::size_t end = std::min(wanted.find('/', at), wanted.size());
        const std::string_view step = std::string_view(wanted).substr(at, end - at);
        if (step == "..") {
            path = FolderOf(path);
        } else if (!step.empty() && step != ".") {
            if (!path.empty()) path += '/';
            path += step;
        }
        at = end + 1;
    }
    return path;
}

Relations::Relations(ZipPackage& package, const std::string& part) {
    const std::string source = RelationsPart(part);
    if (!package.Has(source)) return;
    std::string content = package.Read(source);
    pugi::xml_document document;
    ParseXml(document, content, source);
    for (const pugi::xml_node node : document.document_element().children()) {
        if (!Is(node, "Relationship")) continue;
        const std::string_view type = node.attribute("Type").value();
        const bool outside = std::string_view(node.attribute("TargetMode").value()) == "External";
        Relation relation;
        relation.kind = type.substr(type.rfind('/') + 1);
        if (!outside) relation.target = ResolveTarget(part, node.attribute("Target").value());
        relations_.try_emplace(node.attribute("Id").value(), std::move(relation));
    }
}

const Relations::Relation* Relations::WithId(const std::string& id) const noexcept {
    const auto at = relations_.find(id);
    return at == relations_.end() ? nullptr : &at->second;
}

std::string Relations::TargetOf(std::string_view kind) const {
    for (const auto& [id, relation] : relations_) {
        if (relation.kind == kind) return relation.target;
    }
    return {};
}

}  // namespace vlm::files
