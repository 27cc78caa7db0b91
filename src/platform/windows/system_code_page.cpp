#include "platform/windows/system_code_page.h"

#include <windows.h>

namespace tarncom32::platform::windows {

std::string SystemCodePage::encode(automation::StringView text) const {
    std::string bytes;
    if (text.empty()) return bytes;
    const auto* wide = reinterpret_cast<const wchar_t*>(text.data());
    const int length = static_cast<int>(text.size());
    // Without "best fit": a character that the code page lacks becomes "?", not one that looks like it.
    const DWORD flags = GetACP() == CP_UTF8 ? 0 : WC_NO_BEST_FIT_CHARS;
    const int size = WideCharToMultiByte(CP_ACP, flags, wide, length, nullptr, 0, nullptr, nullptr);
    bytes.resize(static_cast<std::size_t>(size));
    WideCharToMultiByte(CP_ACP, flags, wide, length, bytes.data(), size, nullptr, nullptr);
    return bytes;
}

automation::String SystemCodePage::decode(std::string_view bytes) const {
    automation::String text;
    if (bytes.empty()) return text;
    const int length = static_cast<int>(bytes.size());
    const int size = MultiByteToWideChar(CP_ACP, 0, bytes.data(), length, nullptr, 0);
    text.resize(static_cast<std::size_t>(size));
    MultiByteToWideChar(CP_ACP, 0, bytes.data(), length, reinterpret_cast<wchar_t*>(text.data()), size);
    return text;
}

} // namespace tarncom32::platform::windows
