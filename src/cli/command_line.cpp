#include "cli/command_line.h"

#include "cli/error_text.h"
#include "cli/exit_status.h"
#include "cli/request.h"
#include "cli/usage_error.h"

#include <new>
#include <ostream>

namespace tarncom32::cli {

namespace {

int run(const Output& output, const Request& request) {
    if (request.command == "classes") return runClasses(output, request.json);
    if (request.command == "describe") return runDescribe(output, request.path, request.json);
    if (request.command == "call") return runCall(output, request.call);
    if (request.command == "session") return runSession(output, request.session);
    return runRegistry(output, request.registry);
}

} // namespace

int runCommandLine(const Output& output, const std::vector<std::string>& words) {
    try {
        const std::optional<Request> request = readRequest(output, words);
        return request ? run(output, *request) : exit_status::kDone;
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
