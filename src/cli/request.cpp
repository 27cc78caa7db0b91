#include "cli/request.h"

#include "cli/usage_error.h"

#include <CLI/CLI.hpp>
#include <algorithm>

namespace tarncom32::cli {

namespace {

constexpr const char* kVersion = "tarn " TARNCOM32_VERSION;

/// Whether CLI11 is to read the word as an option: it begins with "-" and is no negative number.
bool isOption(const std::string& word) {
    if (word.size() < 2 || word[0] != '-') return false;
    return !(word[1] >= '0' && word[1] <= '9') && word[1] != '.';
}

/// Takes the arguments of the member out of "call [OPTION...] CLASS.MEMBER [ARG...]", because any text at all is a good
/// argument: what follows "--" is taken as it stands, in front of it only options are left over.
std::vector<std::string> takeCallArguments(std::vector<std::string>& words) {
    std::vector<std::string> arguments;
    std::vector<std::string> kept;
    bool verbatim = false;
    for (std::size_t i = 0; i < words.size(); ++i) {
        if (!verbatim && words[i] == "--")
            verbatim = true;
        else if (!verbatim && (i == 0 || isOption(words[i])))
            kept.push_back(words[i]);
        else
            arguments.push_back(words[i]);
    }
    // The first word that is no option is the member.
    if (!arguments.empty()) {
        kept.push_back(arguments.front());
        arguments.erase(arguments.begin());
    }
    words = std::move(kept);
    return arguments;
}

/// One of the verbs of "tarn registry".
CLI::App* addVerb(CLI::App* registry, RegistryOptions& options, const char* name, const char* help) {
    CLI::App* command = registry->add_subcommand(name, help);
    command->fallthrough(); // --file is understood behind the verb as well
    CLI::Option* key =
        command->add_option("KEY", options.key, "As in 'HKCU\\Software\\Vendor\\Product'; HKCU is HKEY_CURRENT_USER");
    if (std::string_view(name) != "list") key->required();
    return command;
}

void addRegistry(CLI::App& app, RegistryOptions& options) {
    CLI::App* registry = app.add_subcommand("registry", "Look at what add-ins saved where there is no registry");
    registry->require_subcommand(1);
    registry->add_option("--file", options.file, "The store, instead of the user's own");
    registry->footer(
        "The user's own store is the file that TARNCOM32_REGISTRY names, else tarncom32/registry.sqlite in\n"
        "XDG_DATA_HOME or in ~/.local/share.");

    CLI::App* list = addVerb(registry, options, "list", "List the subkeys and values of a key");
    list->add_flag("--json", options.json, "For programs: one object with key, subkeys and values");

    CLI::App* get = addVerb(registry, options, "get", "Print a value");
    get->add_option("NAME", options.name, "The value; without it the key's default value");
    get->add_flag("--json", options.json, "For programs: one object with name, type and data");

    CLI::App* set = addVerb(registry, options, "set", "Write a value, and create its key where that is missing");
    set->add_option("NAME", options.name, "The value; '' for the key's default value")->required();
    set->add_option("DATA", options.text, "A text, a number, or hexadecimal bytes, by the type")->required();
    set->add_option("--type", options.type, "REG_SZ (unless told), REG_EXPAND_SZ, REG_DWORD, REG_QWORD, REG_BINARY");
    set->footer("Put -- in front of names and data that begin with -");

    CLI::App* remove = addVerb(registry, options, "delete", "Delete a value, or a key with its values");
    remove->add_option("NAME", options.name, "The value; without it the whole key")
        ->each([&options](const std::string&) { options.deletesValue = true; });
    remove->add_flag("--recursive", options.recursive, "Delete the key's subkeys too");

    CLI::App* exporting = addVerb(registry, options, "export", "Write a key and all below it as a .reg file");
    exporting->add_option("FILE", options.target, "Where to; without it to standard output");
}

void addCommands(CLI::App& app, Request& request) {
    app.require_subcommand(1);
    app.set_version_flag("--version", kVersion, "Print the version and stop");

    CLI::App* classes = app.add_subcommand("classes", "List the classes of the library");
    classes->add_flag("--json", request.json, "For programs: a list of objects");

    CLI::App* describe = app.add_subcommand("describe", "Show what a class, a member or an enumeration is for");
    describe->add_flag("--json", request.json, "For programs: one object");
    describe->add_option("CLASS[.MEMBER]", request.path, "As in StringFunctions or StringFunctions.IsBlank")
        ->required();

    CLI::App* call = app.add_subcommand("call", "Call a member on a new instance of its class");
    call->add_flag("--json", request.call.json, "For programs: one object with result, out, reports and error");
    call->add_option("CLASS.MEMBER", request.call.path, "As in StringFunctions.ReverseString")->required();
    call->add_option("ARG", request.call.arguments,
                     "The arguments, as text. They are converted to what the member takes; int:5, num:0.5, bool:true, "
                     "json:'[\"a\",2]', text:..., nothing and empty are values of other types; empty is also a new "
                     "variable for the member to fill. Put -- in front of "
                     "arguments that begin with -");
    call->footer("Prints the result, then each by-reference argument by its name.\n"
                 "Exit status: 0; 1 when the member raised an error; 2 when the command line is wrong.");

    CLI::App* session = app.add_subcommand("session", "Run an add-in's session on a Visio drawing");
    SessionOptions& options = request.session;
    session->add_flag("--json", options.json, "For programs: one object");
    session->add_option("DRAWING", options.drawing, "A .vsdx, .vsdm, .vssx, .vssm, .vstx or .vstm file")->required();
    session->add_option("--addon-args", options.addonArgs, "What Visio hands to the add-on")->capture_default_str();
    session->add_option("--wanted-version", options.wantedVersion, "The document's version that the add-in expects");
    session->add_option("--application", options.application, "Keep only the shapes that belong to this application");
    session->add_flag("--sub-shapes", options.subShapes, "Go into groups");

    addRegistry(app, request.registry);
}

/// The one line that says what is wrong and where to read on.
std::string complaint(const CLI::App& app, const CLI::ParseError& error, const std::vector<std::string>& words) {
    const std::vector<CLI::App*> commands = app.get_subcommands();
    if (!commands.empty())
        return oneLine(error.what()) +
               (commands.front()->get_name() == "call" && dynamic_cast<const CLI::ExtrasError*>(&error) != nullptr
                    ? "; put -- in front of arguments that begin with -"
                    : "") +
               "; \"tarn " + commands.front()->get_name() + " --help\" shows what can be written";
    const std::string problem =
        words.empty() ? "a command is missing" : "there is no command or option " + inQuotes(words.front());
    return problem + "; \"tarn --help\" lists them";
}

} // namespace

std::optional<Request> readRequest(const Output& output, const std::vector<std::string>& words) {
    CLI::App app("Lists, describes and calls the classes of TarnCom32, and shows them at work on a Visio drawing.",
                 "tarn");
    Request request;
    addCommands(app, request);
    std::vector<std::string> rest = words;
    if (!rest.empty() && rest.front() == "call") request.call.arguments = takeCallArguments(rest);
    std::ranges::reverse(rest); // CLI11 takes words from the end
    try {
        app.parse(std::move(rest));
    } catch (const CLI::ParseError& error) {
        if (error.get_exit_code() != 0) throw UsageError(complaint(app, error, words));
        app.exit(error, output.out, output.err); // --help, --version
        return std::nullopt;
    }
    const CLI::App* command = app.get_subcommands().front();
    request.command = command->get_name();
    if (request.command == "registry") request.registry.verb = command->get_subcommands().front()->get_name();
    return request;
}

} // namespace tarncom32::cli
