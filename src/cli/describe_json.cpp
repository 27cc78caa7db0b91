#include "cli/describe_json.h"

#include <nlohmann/json.hpp>
#include <ostream>

namespace tarncom32::cli {

using automation::ClassInfo;
using automation::Direction;
using automation::MemberInfo;
using automation::MemberKind;
using automation::ParameterInfo;

namespace {

Json jsonOfType(const automation::Type& type) {
    const automation::String text = automation::typeText(type);
    return text.empty() ? Json() : jsonText(text);
}

Json jsonOfParameters(const std::vector<ParameterInfo>& parameters) {
    Json list = Json::array();
    for (const ParameterInfo& parameter : parameters) {
        Json json;
        json["name"] = jsonText(parameter.name);
        json["type"] = jsonOfType(parameter.type);
        json["direction"] = directionText(parameter.direction);
        json["optional"] = parameter.optional;
        json["default"] = parameter.defaultValue.isMissing() ? Json() : jsonOf(parameter.defaultValue);
        list.push_back(std::move(json));
    }
    return list;
}

Json jsonOfAccessor(const MemberInfo& member) {
    Json json;
    json["name"] = jsonText(member.name);
    json["kind"] = kindText(member.kind);
    json["dispid"] = member.dispid;
    json["result"] = jsonOfType(member.result);
    json["help"] = jsonText(member.help);
    json["parameters"] = jsonOfParameters(member.parameters);
    return json;
}

Json jsonOfGuid(const automation::Guid& guid) {
    return guid.isNull() ? Json() : jsonText(automation::guidText(guid));
}

Json jsonOfEvents(const ClassInfo& info) {
    Json list = Json::array();
    for (const automation::EventInfo& event : info.events) {
        Json json;
        json["name"] = jsonText(event.name);
        json["dispid"] = event.dispid;
        json["help"] = jsonText(event.help);
        json["parameters"] = jsonOfParameters(event.parameters);
        list.push_back(std::move(json));
    }
    return list;
}

} // namespace

std::string directionText(Direction direction) {
    switch (direction) {
    case Direction::In:
        return "in";
    case Direction::InOut:
        return "in/out";
    case Direction::Out:
        break;
    }
    return "out";
}

std::string kindText(MemberKind kind) {
    switch (kind) {
    case MemberKind::Method:
        return "method";
    case MemberKind::Get:
        return "get";
    case MemberKind::Let:
        return "let";
    case MemberKind::Set:
        break;
    }
    return "set";
}

Json jsonOfMember(const std::vector<const MemberInfo*>& members) {
    Json json = jsonOfAccessor(*members.front());
    if (members.size() == 1) return json;
    for (const MemberInfo* member : members)
        json["accessors"].push_back(jsonOfAccessor(*member));
    return json;
}

Json jsonOfClass(const MemberPath& path) {
    const library::CatalogueEntry& entry = *path.entry;
    Json json;
    json["name"] = jsonText(entry.name);
    json["kind"] = jsonText(frame::instancingText(entry.instancing));
    json["progId"] = entry.isCreatable() ? jsonText(entry.progId()) : Json();
    json["built"] = entry.isBuilt();
    json["help"] = jsonText(entry.role());
    if (entry.name == u"Enums")
        for (const frame::EnumerationInfo& enumeration : frame::enumerations())
            json["enumerations"].push_back(jsonOfEnumeration(enumeration));
    if (!path.info) return json;
    json["clsid"] = jsonOfGuid(path.info->clsid);
    json["iid"] = jsonOfGuid(path.info->iid);
    json["members"] = Json::array();
    for (const MemberInfo& member : path.info->members)
        json["members"].push_back(jsonOfAccessor(member));
    json["events"] = jsonOfEvents(*path.info);
    return json;
}

Json jsonOfEnumeration(const frame::EnumerationInfo& enumeration) {
    Json json;
    json["name"] = jsonText(enumeration.name);
    json["kind"] = "enumeration";
    json["help"] = jsonText(enumeration.help);
    json["members"] = Json::array();
    for (const frame::EnumerationMember& member : enumeration.members) {
        Json line;
        line["name"] = jsonText(member.name);
        line["value"] = member.value;
        line["help"] = jsonText(member.help);
        json["members"].push_back(std::move(line));
    }
    return json;
}

void printJson(const Output& output, const Json& json) {
    output.out << indentedText(json) << '\n';
}

} // namespace tarncom32::cli
