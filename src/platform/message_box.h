#pragma once

#include "automation/string.h"

namespace tarncom32::platform {

/// Styles of a message box, numbered as the system numbers them.
namespace message_style {
inline constexpr int kQuestionYesNo = 36; ///< a question mark; Yes and No
inline constexpr int kExclamation = 48;   ///< an exclamation mark; OK
inline constexpr int kInformation = 64;   ///< an information sign; OK
} // namespace message_style

enum class MessageAnswer { Ok = 1, Yes = 6, No = 7 };

/// Shows a modal message and waits until the user has answered it.
class MsgBox {
public:
    virtual ~MsgBox() = default;
    /// `style` is one of `message_style`. Never fails: a platform without a user answers by its own policy.
    virtual MessageAnswer show(automation::StringView text, int style, automation::StringView title) = 0;
};

/// Where nobody is to be told: shows nothing, and answers OK, or No to a question.
MsgBox& noMessageBox();

} // namespace tarncom32::platform
