#include "platform/windows/system_file_dialog.h"

#include <algorithm>
#include <cstddef>
#include <windows.h>

#include <commdlg.h>

namespace tarncom32::platform::windows {

namespace {

// The record without the three fields that came later: its size tells the system so.
constexpr DWORD kRecordSize = offsetof(OPENFILENAMEA, lpTemplateName) + sizeof(OPENFILENAMEA::lpTemplateName);
static_assert(kRecordSize == (sizeof(void*) == 4 ? 76 : 136));

// A handle that travelled as 32 bits: handles are sign-extended.
template <class Handle>
Handle handle(std::int32_t number) {
    return reinterpret_cast<Handle>(static_cast<INT_PTR>(number));
}

// The text at the start of a buffer of at least `size` bytes; the system writes up to `size`.
std::string buffer(std::string text, std::int32_t size) {
    text.resize(std::max<std::size_t>(text.size() + 1, static_cast<std::size_t>(std::max(size, 0))));
    return text;
}

FileDialogAnswer show(BOOL(WINAPI* dialog)(OPENFILENAMEA*), const FileDialogRequest& request,
                      const CodePage& codePage) {
    const std::string filter = codePage.encode(request.filter) + '\0';
    std::string file = buffer(codePage.encode(request.file), request.fileSize);
    std::string fileTitle = buffer(codePage.encode(request.fileTitle), request.fileSize);
    const std::string initialFolder = codePage.encode(request.initialFolder);
    const std::string title = codePage.encode(request.title);
    const std::string defaultExtension = codePage.encode(request.defaultExtension);
    // What is empty is left to the system.
    const auto orNull = [](const std::string& text) { return text.empty() ? nullptr : text.c_str(); };

    OPENFILENAMEA record{};
    record.lStructSize = kRecordSize;
    record.hwndOwner = handle<HWND>(request.owner);
    record.hInstance = handle<HINSTANCE>(request.instance);
    record.lpstrFilter = filter.c_str();
    record.nFilterIndex = static_cast<DWORD>(request.filterIndex);
    record.lpstrFile = file.data();
    record.nMaxFile = static_cast<DWORD>(std::max(request.fileSize, std::int32_t{0}));
    record.lpstrFileTitle = fileTitle.data();
    record.nMaxFileTitle = record.nMaxFile;
    record.lpstrInitialDir = orNull(initialFolder);
    record.lpstrTitle = orNull(title);
    record.Flags = static_cast<DWORD>(request.flags);
    record.lpstrDefExt = orNull(defaultExtension);

    if (dialog(&record)) {
        const std::size_t end = std::min(file.find('\0'), file.size());
        return {true, dialog_failure::kNone, codePage.decode(std::string_view(file).substr(0, end)),
                static_cast<std::int32_t>(record.nFilterIndex)};
    }
    return {false, static_cast<std::int32_t>(CommDlgExtendedError()), {}, request.filterIndex};
}

} // namespace

FileDialogAnswer SystemFileDialog::showOpen(const FileDialogRequest& request) {
    return show(&GetOpenFileNameA, request, codePage_);
}

FileDialogAnswer SystemFileDialog::showSave(const FileDialogRequest& request) {
    return show(&GetSaveFileNameA, request, codePage_);
}

} // namespace tarncom32::platform::windows
