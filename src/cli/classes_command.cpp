#include "cli/commands.h"
#include "cli/exit_status.h"
#include "cli/value_json.h"
#include "library/catalogue.h"

#include <algorithm>
#include <nlohmann/json.hpp>
#include <ostream>

namespace tarncom32::cli {

using automation::toUtf8;

namespace {

Json jsonOfClass(const library::CatalogueEntry& entry) {
    Json json;
    json["name"] = jsonText(entry.name);
    json["kind"] = jsonText(frame::instancingText(entry.instancing));
    json["progId"] = entry.isCreatable() ? jsonText(entry.progId()) : Json();
    json["built"] = entry.isBuilt();
    json["members"] = entry.isBuilt() ? entry.describe().members.size() : 0;
    json["help"] = jsonText(entry.role());
    return json;
}

} // namespace

int runClasses(const Output& output, bool json) {
    if (json) {
        Json list = Json::array();
        for (const library::CatalogueEntry& entry : library::catalogue())
            list.push_back(jsonOfClass(entry));
        output.out << indentedText(list) << '\n';
        return exit_status::kDone;
    }
    std::size_t nameColumns = 0;
    std::size_t kindColumns = 0;
    for (const library::CatalogueEntry& entry : library::catalogue()) {
        nameColumns = std::max(nameColumns, entry.name.size());
        kindColumns = std::max(kindColumns, frame::instancingText(entry.instancing).size());
    }
    const Terminal& terminal = output.terminal;
    for (const library::CatalogueEntry& entry : library::catalogue()) {
        const std::string name = padded(toUtf8(entry.name), static_cast<int>(nameColumns));
        const std::string kind = padded(toUtf8(frame::instancingText(entry.instancing)), static_cast<int>(kindColumns));
        const bool built = entry.isBuilt();
        output.out << (built ? terminal.name(name) : terminal.faint(name)) << "  " << terminal.faint(kind) << "  "
                   << (built ? "" : "(not built yet) ") << toUtf8(entry.role()) << '\n';
    }
    return exit_status::kDone;
}

} // namespace tarncom32::cli
