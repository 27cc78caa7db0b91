#pragma once

#include "automation/members.h"
#include "platform/platform.h"

#include <type_traits>

namespace tarncom32::files {

using automation::Boolean;
using automation::ObjectRef;
using automation::String;
using automation::StringView;

/// The system's dialogs for opening and saving a file. The properties are those of a general common dialog; the ones
/// about colours, fonts, printing and help are kept for their callers and have no effect.
///
/// A cancelled or failed dialog raises its number; nothing is reported.
class CommonDlg final : public automation::Described<CommonDlg> {
public:
    static constexpr StringView kClassName = u"CommonDlg";
    static const automation::ClassInfo& describe();

    explicit CommonDlg(platform::Platform& platform) : platform_(platform) {}

    String fileName;    ///< the proposed name; afterwards the chosen path
    String dialogTitle; ///< the dialog's caption; empty: the system's own
    String filter;      ///< descriptions and patterns in turn, separated by "|"
    /// The extension for names without one. When it is empty and a filter is selected, the dialogs make it that
    /// filter's pattern ("*.vsd", not "vsd", which is meant), and so it stays.
    String defaultExt;
    String initDir;                 ///< the folder shown first; empty: the system's choice
    std::int32_t color = 0;         ///< no effect
    std::int32_t flags = 0;         ///< the system's option flags (`FileOpenConstants`), passed on unchanged
    String fontName;                ///< no effect
    Boolean fontBold;               ///< no effect
    Boolean fontItalic;             ///< no effect
    Boolean fontStrikeThru;         ///< no effect
    Boolean fontUnderLine;          ///< no effect
    std::int16_t fromPage = 0;      ///< no effect
    std::int16_t toPage = 0;        ///< no effect
    std::int16_t min = 0;           ///< no effect
    std::int16_t max = 0;           ///< no effect
    std::int16_t copies = 1;        ///< no effect
    Boolean cancelError;            ///< true (any value but 0): a cancelled dialog raises 32755
    String helpFile;                ///< no effect
    std::int32_t helpCommand = 0;   ///< no effect
    String helpKey;                 ///< no effect
    Boolean printerDefault = true;  ///< no effect
    std::int16_t filterIndex = 0;   ///< the selected filter, from 1; 0 for none
    std::int32_t helpContext = 0;   ///< no effect
    float fontSize = 8;             ///< no effect
    std::int16_t action = 0;        ///< no effect
    std::int16_t maxFileSize = 260; ///< characters of the buffer for the path, its terminator included
    std::int32_t hDC = 0;           ///< no effect
    String fileTitle;               ///< what the buffer for the name without folders holds at first; not changed
    std::int32_t orientation = 1;   ///< no effect
    String tag;                     ///< no effect
    std::int32_t ownerWindow = 0;   ///< handle of the window that the dialog is modal to
    std::int32_t instance = 0;      ///< handle of a module, passed on

    /// Lets the user choose a file to open: `fileName` becomes its path and `filterIndex` the filter chosen. When it
    /// is cancelled both stay; 32755 is raised if `cancelError` says so. Otherwise raises the dialog's own failure
    /// code, 5 for a `fileName` of more than `maxFileSize` - 2 characters, and 9 for a `filterIndex` beyond the filters
    /// when `defaultExt` is empty.
    void showOpen();
    /// The same with the dialog for saving a file.
    void showSave();

    /// The accessors of every property above, for the member table.
    template <auto Field>
    auto read() const {
        return this->*Field;
    }
    template <auto Field>
    void assign(std::conditional_t<std::is_same_v<decltype(std::declval<CommonDlg>().*Field), String&&>, StringView,
                                   std::remove_cvref_t<decltype(std::declval<CommonDlg>().*Field)>>
                    value) {
        this->*Field = value;
    }

private:
    using Show = platform::FileDialogAnswer (platform::FileDialog::*)(const platform::FileDialogRequest&);
    void chooseDefaultExtension();
    platform::FileDialogRequest request() const;
    void show(Show dialog);

    platform::Platform& platform_;
};

} // namespace tarncom32::files
