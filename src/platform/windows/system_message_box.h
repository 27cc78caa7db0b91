#pragma once

#include "platform/message_box.h"

namespace tarncom32::platform::windows {

/// The system's message box, modal to nothing. Where the environment variable TARNCOM32_REPORT_LOG names a file, for
/// hosts that nobody watches, title and text are appended to that file as UTF-8 instead, a question is answered No,
/// and no box is shown.
class SystemMessageBox final : public MessageBox {
public:
    MessageAnswer show(automation::StringView text, int style, automation::StringView title) override;
};

} // namespace tarncom32::platform::windows
