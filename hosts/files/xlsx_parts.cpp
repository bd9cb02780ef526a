#include "hosts/files/xlsx_parts.h"

namespace qx::files {

void parse(Archive& archive, const std::string& part, XmlHandler& handler) {
    XmlParser parser(handler, part);
    archive.read(part, [&](std::string_view piece) { parser.take(piece); });
    parser.take({}, true);
}

namespace {

std::string folder_of(const std::string& part) {
    const std::size_t slash = part.rfind('/');
    return slash == std::string::npos ? "" : part.substr(0, slash + 1);
}

/// The part that a relation of a part in `folder` leads to; "/xl/a.xml" counts from the archive's root.
std::string resolved(std::string folder, std::string_view target) {
    if (target.starts_with('/')) return std::string(target.substr(1));
    while (target.starts_with("../") || target.starts_with("./")) {
        if (target.starts_with("../") && !folder.empty()) folder = folder_of(folder.substr(0, folder.size() - 1));
        target.remove_prefix(target.starts_with("../") ? 3 : 2);
    }
    return folder + std::string(target);
}

} // namespace

std::string relations_part(const std::string& part) {
    const std::string folder = folder_of(part);
    return folder + "_rels/" + part.substr(folder.size()) + ".rels";
}

std::map<std::string, Relation> relations_of(Archive& archive, const std::string& part) {
    std::map<std::string, Relation> relations;
    const std::string folder = folder_of(part), name = relations_part(part);
    if (!archive.has(name)) return relations;
    OpenHandler handler([&](std::string_view element, const Attributes& attributes) {
        if (element != "Relationship" || attributes.get("TargetMode") == "External") return;
        const std::string_view type = attributes.get("Type");
        relations[std::string(attributes.get("Id"))] = {std::string(type.substr(type.rfind('/') + 1)),
                                                        resolved(folder, attributes.get("Target"))};
    });
    parse(archive, name, handler);
    return relations;
}

std::string workbook_part(Archive& archive) {
    for (const auto& [id, relation] : relations_of(archive, ""))
        if (relation.type == "officeDocument") return relation.target;
    throw FileError("the file is not a workbook");
}

} // namespace qx::files
