#include "automation/convert.h"
#include "cli/collecting_message_box.h"
#include "cli/exit_status.h"

#include "cli/session.h"
#include "cli/session_output.h"
#include "cli/usage_error.h"
#include "platform/portable/portable_platform.h"
#include "standin/host.h"

#include <filesystem>

namespace tarncom32::cli {

namespace {

/// What is wrong with the options and shows before anything is opened.
void check(const SessionOptions& options) {
    std::error_code failure;
    if (std::filesystem::is_directory(options.drawing, failure))
        throw UsageError(inQuotes(options.drawing) + " is a folder; name a Visio drawing in it");
    if (!std::filesystem::is_regular_file(options.drawing, failure))
        throw UsageError("there is no file " + inQuotes(options.drawing) + "; name a Visio drawing");
    if (options.wantedVersion.empty()) return;
    try {
        automation::parseNumber(automation::fromUtf8(options.wantedVersion));
    } catch (const automation::Error&) {
        throw UsageError("--wanted-version " + inQuotes(options.wantedVersion) + " is no number; write it as 1.4");
    }
}

} // namespace

int runSession(const Output& output, const SessionOptions& options) {
    check(options);
    platform::portable::TerminalMessageBox terminalBox;
    CollectingMessageBox messageBox(options.json ? nullptr : &terminalBox);
    standin::Host host;
    platform::portable::PortablePlatform platform(messageBox, host);
    library::Library library(platform);
    Session session{platform, library, options};
    runSteps(session);
    if (options.json)
        printSessionAsJson(output, session, messageBox.messages());
    else
        printSession(output, session);
    return exit_status::kDone;
}

} // namespace tarncom32::cli
