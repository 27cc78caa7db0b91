#pragma once

#include "automation/string.h"

/// The values that `registry_writer` writes.
namespace tarncom32::settings {

inline automation::String writerName(int number) {
    return u"Value " + automation::decimalText(number);
}

/// Long ones now and then, so that some writes take several pages.
inline automation::String writerText(automation::StringView path, int number) {
    automation::String text(path);
    text += u" " + automation::decimalText(number) + u" ";
    const int length = number % 50 == 0 ? 900 : number % 7;
    return text + automation::String(static_cast<std::size_t>(length), u'x');
}

} // namespace tarncom32::settings
