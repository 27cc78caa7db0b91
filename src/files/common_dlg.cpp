#include "files/common_dlg.h"

#include "automation/convert.h"
#include "frame/enumerations.h"

#include <algorithm>
#include <limits>

namespace tarncom32::files {

using automation::Error;
using platform::FileDialog;
using platform::FileDialogAnswer;
using platform::FileDialogRequest;

namespace errors = automation::errors;

namespace {

constexpr auto kCancel = static_cast<std::int32_t>(frame::ErrorConstants::cdlCancel);
// A code of the dialogs that callers have always seen as a cancelled dialog.
constexpr std::int32_t kAlsoCancelled = 4104;

// The piece of that number, from 0, between the separators. Raises 9 when there is none.
StringView pieceOf(StringView text, char16_t separator, std::int32_t number) {
    if (text.empty()) throw Error(errors::SubscriptOutOfRange);
    for (; number > 0; --number) {
        const std::size_t end = text.find(separator);
        if (end == StringView::npos) throw Error(errors::SubscriptOutOfRange);
        text.remove_prefix(end + 1);
    }
    return text.substr(0, text.find(separator));
}

} // namespace

void CommonDlg::chooseDefaultExtension() {
    if (defaultExt.empty() && filterIndex > 0) defaultExt = pieceOf(filter, u'|', 2 * filterIndex - 1);
}

FileDialogRequest CommonDlg::request() const {
    const auto room = maxFileSize - static_cast<std::int64_t>(fileName.size()) - 2;
    if (room < 0) throw Error(errors::InvalidProcedureCall);

    FileDialogRequest request;
    request.owner = ownerWindow;
    request.instance = instance;
    request.filter = filter;
    std::ranges::replace(request.filter, u'|', u'\0');
    request.filter.push_back(u'\0');
    request.filterIndex = filterIndex;
    request.file = fileName;
    request.file.push_back(u'\0');
    request.file.append(static_cast<std::size_t>(room), u' ');
    request.fileSize = maxFileSize;
    request.fileTitle = fileTitle;
    request.initialFolder = initDir;
    request.title = dialogTitle;
    request.flags = flags;
    request.defaultExtension = defaultExt;
    return request;
}

void CommonDlg::show(Show dialog) {
    chooseDefaultExtension();
    const FileDialogAnswer answer = (platform_.files.dialog.*dialog)(request());
    if (answer.chosen) {
        fileName = answer.file.substr(0, answer.file.find(u'\0'));
        filterIndex = automation::toInteger(answer.filterIndex);
        return;
    }
    std::int32_t code = answer.failure;
    if ((code == platform::dialog_failure::kNone && cancelError.isNonZero()) || code == kAlsoCancelled) code = kCancel;
    if (code != 0) throw Error(code);
}

void CommonDlg::showOpen() {
    show(&FileDialog::showOpen);
}

void CommonDlg::showSave() {
    show(&FileDialog::showSave);
}

} // namespace tarncom32::files
