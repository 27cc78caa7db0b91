#include "cli/command_line.h"

#include "cli/error_text.h"
#include "cli/exit_status.h"
#include "cli/registry_command.h"
#include "cli/usage_error.h"

#include <CLI/CLI.hpp>
#include <algorithm>
#include <new>

namespace tarncom32::cli {

namespace {

constexpr const char* kVersion = "tarn " TARNCOM32_VERSION;

/// What the command line asks for.
struct Request {
    bool json = false;
    std::string path{};
    CallOptions call{};
    RegistryOptions registry{};
    SessionOptions session{};
};

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
    call->add_flag("--json", request.json, "For programs: one object with result, out, reports and error");
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
    session->add_flag("--json", request.json, "For programs: one object");
    session->add_option("DRAWING", options.drawing, "A .vsdx, .vsdm, .vssx, .vssm, .vstx or .vstm file")->required();
    session->add_option("--addon-args", options.addonArgs, "What Visio hands to the add-on")->capture_default_str();
    session->add_option("--wanted-version", options.wantedVersion, "The document's version that the add-in expects");
    session->add_option("--application", options.application, "Keep only the shapes that belong to this application");
    session->add_flag("--sub-shapes", options.subShapes, "Go into groups");

    addRegistryCommand(app, request.registry);
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

int run(const Output& output, const CLI::App& app, Request& request) {
    const std::string& command = app.get_subcommands().front()->get_name();
    if (command == "classes") return runClasses(output, request.json);
    if (command == "describe") return runDescribe(output, request.path, request.json);
    if (command == "registry") return runRegistry(output, app, request.registry);
    if (command == "call") {
        request.call.json = request.json;
        return runCall(output, request.call);
    }
    request.session.json = request.json;
    return runSession(output, request.session);
}

} // namespace

int runCommandLine(const Output& output, const std::vector<std::string>& words) {
    CLI::App app("Lists, describes and calls the classes of TarnCom32, and shows them at work on a Visio drawing.",
                 "tarn");
    Request request;
    addCommands(app, request);
    std::vector<std::string> rest = words;
    std::vector<std::string> arguments;
    if (!rest.empty() && rest.front() == "call") arguments = takeCallArguments(rest);
    std::ranges::reverse(rest); // CLI11 takes words from the end
    try {
        app.parse(std::move(rest));
        request.call.arguments = std::move(arguments);
        return run(output, app, request);
    } catch (const CLI::ParseError& error) {
        if (error.get_exit_code() == 0) return app.exit(error, output.out, output.err); // --help, --version
        output.err << "tarn: " << complaint(app, error, words) << '\n';
        return exit_status::kUsage;
    } catch (const UsageError& error) {
        output.err << "tarn: " << error.what() << '\n';
        return exit_status::kUsage;
    } catch (const automation::Error& error) {
        output.err << "tarn: " << errorText(error) << '\n';
        return exit_status::kRaised;
    } catch (const std::bad_alloc&) {
        output.err << "tarn: there is not enough memory for this\n";
        return exit_status::kRaised;
    } catch (const std::exception& error) {
        output.err << "tarn: " << oneLine(error.what()) << '\n';
        return exit_status::kRaised;
    }
}

} // namespace tarncom32::cli
