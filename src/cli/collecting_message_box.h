#pragma once

#include "platform/message_box.h"

#include <string>
#include <vector>

namespace tarncom32::cli {

/// Keeps the text of every message, and hands it on to another box where there is one. Without one a question is
/// answered with No, anything else with OK.
class CollectingMessageBox final : public platform::MsgBox {
public:
    /// `shownBy`, null for none, must outlive this object.
    explicit CollectingMessageBox(platform::MsgBox* shownBy) : shownBy_(shownBy) {}

    platform::MessageAnswer show(automation::StringView text, int style, automation::StringView title) override;

    /// The messages so far in UTF-8, the first one first.
    const std::vector<std::string>& messages() const { return messages_; }

private:
    platform::MsgBox* shownBy_;
    std::vector<std::string> messages_;
};

} // namespace tarncom32::cli
