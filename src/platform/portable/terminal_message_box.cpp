#include "platform/portable/terminal_message_box.h"

#include <iostream>
#include <unistd.h>

namespace tarncom32::platform::portable {

namespace {

// The line ends of a message are the system's own; a terminal wants line feeds.
std::string terminalText(automation::StringView text) {
    std::string out = automation::toUtf8(text);
    std::erase(out, '\r');
    return out;
}

} // namespace

MessageAnswer TerminalMessageBox::show(automation::StringView text, int style, automation::StringView title) {
    std::cerr << "[" << terminalText(title) << "] " << terminalText(text) << std::endl;
    if (style != message_style::kQuestionYesNo) return MessageAnswer::Ok;
    if (!isatty(STDIN_FILENO)) return unattended_;
    for (std::string line;;) {
        std::cerr << "Yes or no? [y/n] " << std::flush;
        if (!std::getline(std::cin, line)) return unattended_;
        if (line == "y" || line == "Y" || line == "yes") return MessageAnswer::Yes;
        if (line == "n" || line == "N" || line == "no") return MessageAnswer::No;
    }
}

} // namespace tarncom32::platform::portable
