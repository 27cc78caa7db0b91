#include "cli/registry_command.h"

#include "automation/error.h"
#include "cli/exit_status.h"
#include "cli/registry_export.h"
#include "cli/registry_key_name.h"
#include "cli/registry_value_text.h"
#include "cli/usage_error.h"
#include "platform/portable/sqlite_registry.h"
#include "platform/portable/windows_1252.h"

#include <CLI/CLI.hpp>
#include <fstream>
#include <nlohmann/json.hpp>
#include <ostream>

namespace tarncom32::cli {

namespace {

using automation::toUtf8;
using platform::RegistryAccess;
using platform::RegistryRead;
using platform::RegistryValue;

constexpr std::size_t kAll = std::size_t{1} << 40;

/// The store, and what was asked for in it.
struct Session {
    Session(const Output& sessionOutput, const RegistryOptions& sessionOptions)
        : output(sessionOutput), options(sessionOptions) {}

    std::string nameText(std::string_view bytes) const { return toUtf8(codePage.decode(bytes)); }

    [[noreturn]] void noSuchValue() {
        const std::string which = options.name.empty() ? "default value" : "value " + inQuotes(options.name);
        noSuch(which + " of the key " + key.spelled(registry));
    }
    [[noreturn]] void noSuch(const std::string& what) {
        throw automation::Error(
            automation::errors::FileNotFound,
            automation::fromUtf8("There is no " + what + " in the store " + registry.file().string()));
    }
    std::unique_ptr<platform::RegistryKey> open(RegistryAccess access) {
        auto opened = registry.open(key.root(), key.path(), access);
        if (!opened) noSuch("key " + key.spelled(registry) + (access == RegistryAccess::Full ? " to write" : ""));
        return opened;
    }

    const Output& output;
    const RegistryOptions& options;
    platform::portable::Windows1252 codePage;
    platform::portable::SqliteRegistry registry{options.file.empty() ? platform::portable::SqliteRegistry::defaultFile()
                                                                     : std::filesystem::path(options.file),
                                                codePage};
    RegistryKeyName key{codePage, options.key.empty() ? "HKCU" : options.key};
    std::string name = toCodePage(codePage, options.name);
};

int list(Session& session) {
    const Output& output = session.output;
    if (session.options.key.empty()) {
        if (session.options.json) {
            output.out << indentedText(Json(rootNames())) << '\n';
        } else {
            for (const std::string& root : rootNames())
                output.out << output.terminal.name(root) << '\n';
        }
        return exit_status::kDone;
    }
    const auto key = session.open(RegistryAccess::Read);
    Json json;
    json["key"] = session.key.spelled(session.registry);
    json["subkeys"] = Json::array();
    json["values"] = Json::array();
    std::string subkey;
    for (std::uint32_t i = 0; key->subkeyAt(i, subkey); ++i)
        json["subkeys"].push_back(session.nameText(subkey));
    std::vector<std::string> lines;
    RegistryValue value;
    for (std::uint32_t i = 0; key->valueAt(i, kAll, kAll, value) == RegistryRead::Done; ++i) {
        json["values"].push_back({{"name", session.nameText(value.name)},
                                  {"type", typeName(value.type)},
                                  {"data", jsonOfData(session.codePage, value)}});
        lines.push_back(oneLine(readableData(session.codePage, value)));
    }
    if (session.options.json) {
        output.out << indentedText(json) << '\n';
        return exit_status::kDone;
    }
    int columns = 0;
    const auto shownName = [](const Json& entry) {
        const std::string name = oneLine(entry["name"].get<std::string>());
        return name.empty() ? std::string("(Default)") : name;
    };
    for (const Json& entry : json["values"])
        columns = std::max(columns, columnsOf(shownName(entry)));
    for (const Json& name : json["subkeys"])
        output.out << output.terminal.heading(oneLine(name.get<std::string>())) << "\\\n";
    for (std::size_t i = 0; i < lines.size(); ++i) {
        const Json& entry = json["values"][i];
        output.out << output.terminal.name(padded(shownName(entry), columns)) << "  "
                   << output.terminal.faint(entry["type"].get<std::string>()) << (lines[i].empty() ? "" : "  ")
                   << lines[i] << '\n';
    }
    return exit_status::kDone;
}

int get(Session& session) {
    RegistryValue value;
    if (session.open(RegistryAccess::Read)->read(session.name, kAll, value) != RegistryRead::Done)
        session.noSuchValue();
    if (session.options.json)
        session.output.out << indentedText({{"name", session.nameText(value.name)},
                                            {"type", typeName(value.type)},
                                            {"data", jsonOfData(session.codePage, value)}})
                           << '\n';
    else
        session.output.out << readableData(session.codePage, value) << '\n';
    return exit_status::kDone;
}

int set(Session& session) {
    const RegistryValue value = parseData(session.codePage, session.options.type, session.options.text);
    session.registry.create(session.key.root(), session.key.path())->write(session.name, value.type, value.bytes);
    return exit_status::kDone;
}

/// Deletes the subkeys of `path`, the innermost first.
void deleteBelow(Session& session, const std::string& path) {
    const auto key = session.registry.open(session.key.root(), path, RegistryAccess::Full);
    std::string subkey;
    while (key && key->subkeyAt(0, subkey)) {
        deleteBelow(session, path + "\\" + subkey);
        if (!key->deleteSubkey(subkey)) return;
    }
}

int remove(Session& session) {
    if (session.key.isRoot() && !session.options.deletesValue)
        throw UsageError("a root cannot be deleted; name a key below it");
    session.open(RegistryAccess::Read); // else a store that is missing would be made
    const auto key = session.open(RegistryAccess::Full);
    if (session.options.deletesValue) {
        if (!key->deleteValue(session.name)) session.noSuchValue();
        return exit_status::kDone;
    }
    if (session.options.recursive) deleteBelow(session, session.key.path());
    const auto parent = session.registry.open(session.key.root(), session.key.parentPath(), RegistryAccess::Full);
    if (!parent || !parent->deleteSubkey(session.key.lastName()))
        throw automation::Error(automation::errors::PathFileAccess,
                                automation::fromUtf8("The key " + session.key.spelled(session.registry) +
                                                     " has subkeys; add --recursive to delete them too"));
    return exit_status::kDone;
}

int exportText(Session& session) {
    const std::string& target = session.options.target;
    session.open(RegistryAccess::Read);
    std::ofstream file;
    if (!target.empty()) file.open(target, std::ios::binary | std::ios::trunc);
    std::ostream& stream = target.empty() ? session.output.out : file;
    exportKey(session.codePage, session.registry, session.key.root(), session.key.path(),
              session.key.spelled(session.registry), [&](std::string_view bytes) { stream << bytes; });
    stream.flush();
    if (!target.empty() && !file)
        throw automation::Error(automation::errors::PathFileAccess,
                                automation::fromUtf8("The file " + target + " could not be written"));
    return exit_status::kDone;
}

CLI::App* addCommand(CLI::App* registry, RegistryOptions& options, const char* name, const char* help) {
    CLI::App* command = registry->add_subcommand(name, help);
    command->fallthrough(); // --file is understood behind the verb as well
    CLI::Option* key =
        command->add_option("KEY", options.key, "As in 'HKCU\\Software\\Vendor\\Product'; HKCU is HKEY_CURRENT_USER");
    if (std::string_view(name) != "list") key->required();
    return command;
}

} // namespace

void addRegistryCommand(CLI::App& app, RegistryOptions& options) {
    CLI::App* registry = app.add_subcommand("registry", "Look at what add-ins saved where there is no registry");
    registry->require_subcommand(1);
    registry->add_option("--file", options.file, "The store, instead of the user's own");
    registry->footer(
        "The user's own store is the file that TARNCOM32_REGISTRY names, else tarncom32/registry.sqlite in\n"
        "XDG_DATA_HOME or in ~/.local/share.");

    CLI::App* list = addCommand(registry, options, "list", "List the subkeys and values of a key");
    list->add_flag("--json", options.json, "For programs: one object with key, subkeys and values");

    CLI::App* get = addCommand(registry, options, "get", "Print a value");
    get->add_option("NAME", options.name, "The value; without it the key's default value");
    get->add_flag("--json", options.json, "For programs: one object with name, type and data");

    CLI::App* set = addCommand(registry, options, "set", "Write a value, and create its key where that is missing");
    set->add_option("NAME", options.name, "The value; '' for the key's default value")->required();
    set->add_option("DATA", options.text, "A text, a number, or hexadecimal bytes, by the type")->required();
    set->add_option("--type", options.type, "REG_SZ (unless told), REG_EXPAND_SZ, REG_DWORD, REG_QWORD, REG_BINARY");
    set->footer("Put -- in front of names and data that begin with -");

    CLI::App* remove = addCommand(registry, options, "delete", "Delete a value, or a key with its values");
    remove->add_option("NAME", options.name, "The value; without it the whole key")
        ->each([&options](const std::string&) { options.deletesValue = true; });
    remove->add_flag("--recursive", options.recursive, "Delete the key's subkeys too");

    CLI::App* exporting = addCommand(registry, options, "export", "Write a key and all below it as a .reg file");
    exporting->add_option("FILE", options.target, "Where to; without it to standard output");
}

int runRegistry(const Output& output, const CLI::App& app, const RegistryOptions& options) {
    Session session(output, options);
    const std::string& command = app.get_subcommands().front()->get_subcommands().front()->get_name();
    if (command == "list") return list(session);
    if (command == "get") return get(session);
    if (command == "set") return set(session);
    if (command == "delete") return remove(session);
    return exportText(session);
}

} // namespace tarncom32::cli
