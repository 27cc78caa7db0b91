#pragma once

#include "platform/message_box.h"

namespace tarncom32::platform::windows {

/// The system's message box. It belongs to the calling thread's active window, and as long as it is shown no window of
/// that thread takes the user's input. Where the environment variable TARNCOM32_REPORT_LOG names a file, for hosts that
/// nobody watches, title and text are appended to that file as UTF-8 instead, a question is answered No, and no box is
/// shown.
class SystemMessageBox final : public MsgBox {
public:
    MessageAnswer show(automation::StringView text, int style, automation::StringView title) override;
};

} // namespace tarncom32::platform::windows
