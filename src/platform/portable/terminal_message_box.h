#pragma once

#include "platform/message_box.h"

#include <cstdio>

namespace tarncom32::platform::portable {

/// Message boxes of a terminal: title and text are written to the error stream. A question is answered from the
/// terminal; where there is none, or its input has ended, `unattended` is the answer.
class TerminalMessageBox final : public MsgBox {
public:
    explicit TerminalMessageBox(MessageAnswer unattended = MessageAnswer::No) : unattended_(unattended) {}
    MessageAnswer show(automation::StringView text, int style, automation::StringView title) override;

private:
    MessageAnswer unattended_;
};

} // namespace tarncom32::platform::portable
