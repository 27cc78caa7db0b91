#include "cli/registry_command.h"

#include "automation/error.h"
#include "cli/exit_status.h"
#include "cli/registry_export.h"
#include "cli/registry_key_name.h"
#include "cli/registry_value_text.h"
#include "cli/usage_error.h"
#include "platform/portable/sqlite_registry.h"
#include "platform/portable/windows_1252.h"

#include <fstream>
#include <nlohmann/json.hpp>
#include <ostream>

namespace tarncom32::cli {

namespace {

using automation::toUtf8;
using platform::RegistryAccess;
using platform::RegistryRead;
using platform::RegistryValue;

/// The store, and what was asked for in it.
struct OpenStore {
    OpenStore(const Output& storeOutput, const RegistryOptions& storeOptions)
        : output(storeOutput), options(storeOptions) {}

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

int list(OpenStore& store) {
    const Output& output = store.output;
    if (store.options.key.empty()) {
        if (store.options.json) {
            output.out << indentedText(Json(rootNames())) << '\n';
        } else {
            for (const std::string& root : rootNames())
                output.out << output.terminal.name(root) << '\n';
        }
        return exit_status::kDone;
    }
    const auto key = store.open(RegistryAccess::Read);
    Json json;
    json["key"] = store.key.spelled(store.registry);
    json["subkeys"] = Json::array();
    json["values"] = Json::array();
    std::string subkey;
    for (std::uint32_t i = 0; key->subkeyAt(i, subkey); ++i)
        json["subkeys"].push_back(store.nameText(subkey));
    std::vector<std::string> lines;
    RegistryValue value;
    for (std::uint32_t i = 0; key->valueAt(i, kAll, kAll, value) == RegistryRead::Done; ++i) {
        json["values"].push_back({{"name", store.nameText(value.name)},
                                  {"type", typeName(value.type)},
                                  {"data", jsonOfData(store.codePage, value)}});
        lines.push_back(oneLine(readableData(store.codePage, value)));
    }
    if (store.options.json) {
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

int get(OpenStore& store) {
    RegistryValue value;
    if (store.open(RegistryAccess::Read)->read(store.name, kAll, value) != RegistryRead::Done) store.noSuchValue();
    if (store.options.json)
        store.output.out << indentedText({{"name", store.nameText(value.name)},
                                          {"type", typeName(value.type)},
                                          {"data", jsonOfData(store.codePage, value)}})
                         << '\n';
    else
        store.output.out << readableData(store.codePage, value) << '\n';
    return exit_status::kDone;
}

int set(OpenStore& store) {
    const RegistryValue value = parseData(store.codePage, store.options.type, store.options.text);
    store.registry.create(store.key.root(), store.key.path())->write(store.name, value.type, value.bytes);
    return exit_status::kDone;
}

/// Deletes the subkeys of `path`, the innermost first.
void deleteBelow(OpenStore& store, const std::string& path) {
    const auto key = store.registry.open(store.key.root(), path, RegistryAccess::Full);
    std::string subkey;
    while (key && key->subkeyAt(0, subkey)) {
        deleteBelow(store, path + "\\" + subkey);
        if (!key->deleteSubkey(subkey)) return;
    }
}

int remove(OpenStore& store) {
    if (store.key.isRoot() && !store.options.deletesValue)
        throw UsageError("a root cannot be deleted; name a key below it");
    store.open(RegistryAccess::Read); // else a store that is missing would be made
    const auto key = store.open(RegistryAccess::Full);
    if (store.options.deletesValue) {
        if (!key->deleteValue(store.name)) store.noSuchValue();
        return exit_status::kDone;
    }
    if (store.options.recursive) deleteBelow(store, store.key.path());
    const auto parent = store.registry.open(store.key.root(), store.key.parentPath(), RegistryAccess::Full);
    if (!parent || !parent->deleteSubkey(store.key.lastName()))
        throw automation::Error(automation::errors::PathFileAccess,
                                automation::fromUtf8("The key " + store.key.spelled(store.registry) +
                                                     " has subkeys; add --recursive to delete them too"));
    return exit_status::kDone;
}

int exportText(OpenStore& store) {
    const std::string& target = store.options.target;
    store.open(RegistryAccess::Read);
    std::ofstream file;
    if (!target.empty()) file.open(target, std::ios::binary | std::ios::trunc);
    std::ostream& stream = target.empty() ? store.output.out : file;
    exportKey(store.codePage, store.registry, store.key.root(), store.key.path(), store.key.spelled(store.registry),
              [&](std::string_view bytes) { stream << bytes; });
    stream.flush();
    if (!target.empty() && !file)
        throw automation::Error(automation::errors::PathFileAccess,
                                automation::fromUtf8("The file " + target + " could not be written"));
    return exit_status::kDone;
}

} // namespace

int runRegistry(const Output& output, const RegistryOptions& options) {
    OpenStore store(output, options);
    if (options.verb == "list") return list(store);
    if (options.verb == "get") return get(store);
    if (options.verb == "set") return set(store);
    if (options.verb == "delete") return remove(store);
    return exportText(store);
}

} // namespace tarncom32::cli
