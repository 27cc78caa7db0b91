#include "files/common_dlg.h"

namespace tarncom32::files {

using automation::ClassInfo;
using automation::in;
using automation::MemberInfo;
using automation::operator""_guid;
using D = CommonDlg;

namespace member = automation::member;

namespace {

constexpr StringView kNoEffect = u"Kept for the caller; has no effect on the file dialogs.";

// Both accessors of a property that is a plain field.
template <auto Field>
void addProperty(std::vector<MemberInfo>& table, std::int32_t dispid, StringView name, StringView help) {
    table.push_back(member::get<&D::read<Field>>(dispid, name, {}, help));
    table.push_back(member::let<&D::assign<Field>>(dispid, name, {in(u"vNewValue")}, help));
}

std::vector<MemberInfo> members() {
    std::vector<MemberInfo> t;
    addProperty<&D::fileName>(t, 1, u"FileName", u"The proposed file name; afterwards the chosen path.");
    addProperty<&D::dialogTitle>(t, 2, u"DialogTitle", u"The caption of the dialog.");
    addProperty<&D::filter>(t, 3, u"Filter", u"Pairs of description and pattern, separated by \"|\".");
    addProperty<&D::defaultExt>(t, 4, u"DefaultExt",
                                u"The default extension; when empty it becomes the selected filter's pattern.");
    addProperty<&D::initDir>(t, 5, u"InitDir", u"The folder that is shown first.");
    addProperty<&D::color>(t, 6, u"Color", kNoEffect);
    addProperty<&D::flags>(t, 7, u"Flags", u"Options of the dialog, a sum of FileOpenConstants.");
    addProperty<&D::fontName>(t, 8, u"FontName", kNoEffect);
    addProperty<&D::fontBold>(t, 9, u"FontBold", kNoEffect);
    addProperty<&D::fontItalic>(t, 10, u"FontItalic", kNoEffect);
    addProperty<&D::fontStrikeThru>(t, 11, u"FontStrikeThru", kNoEffect);
    addProperty<&D::fontUnderLine>(t, 12, u"FontUnderLine", kNoEffect);
    addProperty<&D::fromPage>(t, 13, u"FromPage", kNoEffect);
    addProperty<&D::toPage>(t, 14, u"ToPage", kNoEffect);
    addProperty<&D::min>(t, 15, u"Min", kNoEffect);
    addProperty<&D::max>(t, 16, u"Max", kNoEffect);
    addProperty<&D::copies>(t, 17, u"Copies", kNoEffect);
    addProperty<&D::cancelError>(t, 18, u"CancelError", u"Whether a cancelled dialog raises error 32755.");
    addProperty<&D::helpFile>(t, 19, u"HelpFile", kNoEffect);
    addProperty<&D::helpCommand>(t, 20, u"HelpCommand", kNoEffect);
    addProperty<&D::helpKey>(t, 21, u"HelpKey", kNoEffect);
    addProperty<&D::printerDefault>(t, 22, u"PrinterDefault", kNoEffect);
    addProperty<&D::filterIndex>(t, 23, u"FilterIndex", u"The selected filter, counted from 1; 0 for none.");
    addProperty<&D::helpContext>(t, 24, u"HelpContext", kNoEffect);
    addProperty<&D::fontSize>(t, 25, u"FontSize", kNoEffect);
    addProperty<&D::action>(t, 26, u"Action", kNoEffect);
    addProperty<&D::maxFileSize>(t, 27, u"MaxFileSize", u"The size of the buffer for the path, in characters.");
    addProperty<&D::hDC>(t, 28, u"hDC", kNoEffect);
    addProperty<&D::fileTitle>(t, 29, u"FileTitle", u"What the buffer for the name without folders holds at first.");
    addProperty<&D::orientation>(t, 30, u"Orientation", kNoEffect);
    addProperty<&D::tag>(t, 31, u"Tag", kNoEffect);
    addProperty<&D::ownerWindow>(t, 32, u"OwnerWindow", u"The handle of the window that the dialog belongs to.");
    addProperty<&D::instance>(t, 33, u"Instance", u"The handle of a module, passed to the dialog.");
    t.push_back(member::method<&D::showOpen>(34, u"ShowOpen", {}, u"Lets the user choose a file to open."));
    t.push_back(member::method<&D::showSave>(35, u"ShowSave", {}, u"Lets the user choose a file to save to."));
    return t;
}

} // namespace

const ClassInfo& CommonDlg::describe() {
    static const ClassInfo info(kClassName, u"The common dialogs for opening and saving a file.",
                                "ecc0d40b-6202-4136-8b82-5aea8996d616"_guid,
                                "9ffde88c-8044-479d-ae3f-a3dbcb4d35eb"_guid, members());
    return info;
}

} // namespace tarncom32::files
