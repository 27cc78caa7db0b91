#include "cli/session_output.h"

#include "automation/convert.h"
#include "cli/value_json.h"

#include <algorithm>
#include <nlohmann/json.hpp>
#include <ostream>

namespace tarncom32::cli {

using automation::deref;
using automation::MemberName;
using automation::ObjectRef;

namespace {

std::string textOf(const ObjectRef& object, const MemberName& member) {
    return automation::toUtf8(automation::toText(deref(object).get(member)));
}

/// "Empfang (Reception)": the local name, and the universal one where it is
/// another.
std::string bothNames(const ObjectRef& object) {
    const std::string name = textOf(object, u"Name");
    const std::string universal = textOf(object, u"NameU");
    return name == universal ? name : name + " (" + universal + ')';
}

std::string versionText(const Session& session, const Terminal& terminal) {
    if (!session.version) return "not checked";
    const std::string text =
        automation::toUtf8(session.version->documentVersion) + ", wanted " + session.options.wantedVersion;
    return oneLine(text) + ": " +
           (session.version->failed ? terminal.warning("does not suit") : terminal.good("suits"));
}

std::size_t keptCount(const Session& session) {
    return static_cast<std::size_t>(std::ranges::count(session.shapes, true, &SessionShape::kept));
}

std::string shapesText(const Session& session) {
    if (!session.page) return "none, as the add-on string leads to no page";
    std::string text = std::to_string(session.shapes.size());
    text += session.shape ? " inside the shape" : " on the page";
    if (!session.entersGroups) text += ", groups not entered";
    if (!session.options.application.empty())
        text += ", " + std::to_string(keptCount(session)) + " kept for " + oneLine(session.options.application);
    return text;
}

/// Columns: depth, whether the filter keeps the shape, the name moved in by its
/// depth, the universal name.
void printShapes(const Output& output, const Session& session) {
    struct Line {
        const SessionShape& shape;
        std::string name;
        std::string universal;
    };
    const Terminal& terminal = output.terminal;
    const bool filter = !session.options.application.empty();
    std::vector<Line> lines;
    lines.reserve(session.shapes.size());
    int columns = columnsOf("Name");
    for (const SessionShape& shape : session.shapes) {
        const std::string margin(static_cast<std::size_t>(shape.depth) * 2, ' ');
        lines.push_back(
            {shape, margin + oneLine(textOf(shape.shape, u"Name")), oneLine(textOf(shape.shape, u"NameU"))});
        columns = std::max(columns, columnsOf(lines.back().name));
    }
    if (lines.empty()) return;
    output.out << '\n'
               << terminal.heading(std::string("Depth  ") + (filter ? "Kept  " : "") + padded("Name", columns) +
                                   "  Universal name")
               << '\n';
    for (const Line& line : lines) {
        const std::string name = padded(line.name, columns);
        const std::string kept = !filter ? "" : line.shape.kept ? "yes   " : "no    ";
        output.out << padded(std::to_string(line.shape.depth), 5) << "  "
                   << (line.shape.kept ? terminal.good(kept) : terminal.faint(kept))
                   << (line.shape.kept ? terminal.name(name) : terminal.faint(name)) << "  "
                   << terminal.faint(line.universal) << '\n';
    }
}

Json jsonOfNames(const ObjectRef& object) {
    if (!object) return nullptr;
    Json json;
    json["name"] = textOf(object, u"Name");
    json["nameU"] = textOf(object, u"NameU");
    return json;
}

Json jsonOfDocument(const ObjectRef& document) {
    if (!document) return nullptr;
    Json json;
    json["name"] = textOf(document, u"Name");
    json["fullName"] = textOf(document, u"FullName");
    return json;
}

Json jsonOfPage(const ObjectRef& page) {
    Json json = jsonOfNames(page);
    if (!page) return json;
    json["index"] = automation::toLong(page->get(u"Index"));
    json["background"] = automation::toBoolean(page->get(u"Background")).isNonZero();
    return json;
}

Json jsonOfVersion(const Session& session) {
    if (!session.version) return nullptr;
    Json json;
    json["document"] = jsonText(session.version->documentVersion);
    json["wanted"] = session.options.wantedVersion;
    json["suits"] = !session.version->failed;
    return json;
}

Json jsonOfShapes(const Session& session) {
    Json list = Json::array();
    for (const SessionShape& shape : session.shapes) {
        Json json;
        json["depth"] = shape.depth;
        json.update(jsonOfNames(shape.shape));
        json["kept"] = shape.kept;
        list.push_back(std::move(json));
    }
    return list;
}

} // namespace

void printSession(const Output& output, const Session& session) {
    const Terminal& terminal = output.terminal;
    const auto line = [&](std::string_view label, const std::string& text) {
        output.out << terminal.heading(label) << ' ' << text << '\n';
    };
    line("Drawing:", oneLine(session.options.drawing));
    line("Visio:", textOf(session.application, u"Version") + ", major version " + std::to_string(session.majorVersion));
    line("Add-on string:", oneLine(session.options.addonArgs));
    line("Parameters:",
         session.parameters.empty() ? "none" : '"' + oneLine(automation::toUtf8(session.parameters)) + '"');
    line("Document:", session.document ? oneLine(textOf(session.document, u"Name")) : "none");
    line("Page:", session.page ? oneLine(bothNames(session.page)) : "none");
    line("Shape:", session.shape ? oneLine(bothNames(session.shape)) : "none");
    line("Version:", versionText(session, terminal));
    line("Shapes:", shapesText(session));
    printShapes(output, session);
}

void printSessionAsJson(const Output& output, const Session& session, const std::vector<std::string>& reports) {
    Json json;
    json["drawing"] = session.options.drawing;
    json["visio"]["version"] = textOf(session.application, u"Version");
    json["visio"]["majorVersion"] = session.majorVersion;
    json["addonArgs"] = session.options.addonArgs;
    json["parameters"] = jsonText(session.parameters);
    json["document"] = jsonOfDocument(session.document);
    json["page"] = jsonOfPage(session.page);
    json["shape"] = jsonOfNames(session.shape);
    json["version"] = jsonOfVersion(session);
    json["application"] = session.options.application.empty() ? Json() : Json(session.options.application);
    json["shapes"] = jsonOfShapes(session);
    for (const std::string& report : reports)
        json["reports"].push_back(report);
    output.out << indentedText(json) << '\n';
}

} // namespace tarncom32::cli
