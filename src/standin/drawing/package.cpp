#include "standin/drawing/package.h"

#include "standin/drawing/drawing_error.h"
#include "standin/drawing/part_name.h"
#include "standin/drawing/xml_part.h"

namespace tarncom32::standin::drawing {

namespace {

constexpr std::string_view relationshipNamespaces[] = {"http://schemas.openxmlformats.org/package/2006/relationships"};
constexpr std::string_view contentTypeNamespaces[] = {"http://schemas.openxmlformats.org/package/2006/content-types"};
constexpr std::string_view contentTypesPart = "[Content_Types].xml";

} // namespace

Relationships readRelationships(ZipArchive& archive, std::string_view source) {
    Relationships result;
    const std::string part = relationshipsPart(source);
    if (!archive.contains(part)) return result;

    XmlPart xml(archive, part, relationshipNamespaces, "Relationships");
    for (auto scope = xml.children(); xml.next(scope);) {
        if (xml.name() != "Relationship") continue;
        std::string id;
        Relationship relationship;
        xml.attributes([&](std::string_view name, std::string_view value) {
            if (name == "Id") id = value;
            if (name == "Type") relationship.type = value;
            if (name == "Target") relationship.target = value;
            if (name == "TargetMode") relationship.external = value == "External";
        });
        if (result.size() >= static_cast<std::size_t>(archive.limits().maxParts))
            xml.fail("has more than " + std::to_string(archive.limits().maxParts) + " relationships");
        if (!result.emplace(id, std::move(relationship)).second)
            xml.fail("has two relationships with the id \"" + printable(id) + "\"");
    }
    xml.finish();
    return result;
}

std::string contentTypeOf(ZipArchive& archive, std::string_view part) {
    const std::string key = "/" + partKey(part);
    const std::size_t dot = key.find_last_of("./");
    const std::string extension = key[dot] == '.' ? key.substr(dot + 1) : "";

    std::string own;
    std::string byExtension;
    XmlPart xml(archive, std::string(contentTypesPart), contentTypeNamespaces, "Types");
    for (auto scope = xml.children(); xml.next(scope);) {
        std::string* found = nullptr;
        if (xml.name() == "Override" && partKey(xml.attribute("PartName")) == key) found = &own;
        if (xml.name() == "Default" && partKey(xml.attribute("Extension")) == extension) found = &byExtension;
        if (found != nullptr) *found = xml.attribute("ContentType");
    }
    xml.finish();
    return own.empty() ? byExtension : own;
}

std::string followRelationship(const ZipArchive& archive, std::string_view source, const Relationship& relationship) {
    const std::string where = relationshipsPart(source);
    const std::string target = "has the target \"" + printable(relationship.target) + "\", which ";
    if (relationship.external) archive.fail(where, target + "is outside the package; it is refused");
    const ResolvedTarget resolved = resolveTarget(source, relationship.target);
    if (resolved.part.empty()) archive.fail(where, target + resolved.problem + "; it is refused");
    if (!archive.contains(resolved.part)) archive.fail(resolved.part, "is missing from the package");
    return resolved.part;
}

std::string followOnly(const ZipArchive& archive, std::string_view source, const Relationships& relationships,
                       std::string_view type) {
    const Relationship* found = nullptr;
    for (const auto& [id, relationship] : relationships) {
        if (relationship.type != type) continue;
        if (found != nullptr)
            archive.fail(relationshipsPart(source), "has two relationships of the type " + std::string(type));
        found = &relationship;
    }
    return found == nullptr ? std::string() : followRelationship(archive, source, *found);
}

} // namespace tarncom32::standin::drawing
