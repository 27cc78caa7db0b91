#include "cli/collecting_message_box.h"

namespace tarncom32::cli {

using platform::MessageAnswer;

MessageAnswer CollectingMessageBox::show(automation::StringView text, int style, automation::StringView title) {
    messages_.push_back(automation::toUtf8(text));
    if (shownBy_) return shownBy_->show(text, style, title);
    return style == platform::message_style::kQuestionYesNo ? MessageAnswer::No : MessageAnswer::Ok;
}

} // namespace tarncom32::cli
