#include "frame/catalogue.h"

#include "frame/report.h"

namespace tarncom32::frame {

using automation::String;
using automation::StringView;

namespace {

constexpr CatalogueEntry kCatalogue[] = {
    {u"VisioFunctions", Instancing::Global,
     u"Visio's object model: add-on strings, versions of documents, walks over shapes."},
    {u"StringFunctions", Instancing::Global, u"Delimited lists and streams of text."},
    {u"ArrayFunctions", Instancing::Global, u"Arrays of Visio formulas and drops, and the sort of a variant array."},
    {u"FileOperations", Instancing::Global, u"Paths, file names, temporary files, long and short path forms."},
    {u"XMLFunctions", Instancing::Global, u"Questions to XML documents, and their construction."},
    {u"WinAPIFunctions", Instancing::Global, u"Colour depth of the display."},
    {u"PowerVBFunctions", Instancing::Global, u"Window subclassing, and weak and strong object references."},
    {u"ProgressBar", Instancing::Creatable, u"A progress display with two bars and a cancel button."},
    {u"RecycleBin", Instancing::Creatable, u"Deletes Visio objects once no events are pending."},
    {u"MRUList", Instancing::Creatable, u"A list of recently used files on Visio's menus."},
    {u"CommonDlg", Instancing::Creatable, u"The common dialogs for opening and saving a file."},
    {u"UserProfile", Instancing::Creatable, u"A named profile of settings, kept in the registry."},
    {u"DualCaptionVisioMenuItem", Instancing::Creatable, u"A Visio menu item that toggles between two captions."},
    {u"UserProfileEntries", Instancing::NotCreatable, u"The entries of a user profile."},
    {u"UserProfileEntry", Instancing::NotCreatable, u"A named setting of a user profile."},
    {u"Enums", Instancing::NotCreatable, u"Carries the public enumerations; no members."},
    {u"C_MRUItem", Instancing::Internal, u"An item of a list of recently used files."},
    {u"C_MRUItems", Instancing::Internal, u"The items of a list of recently used files."},
    {u"frmProgressBarForm", Instancing::Internal, u"The window of a progress display."},
};

} // namespace

StringView instancingText(Instancing instancing) {
    switch (instancing) {
    case Instancing::Global:
        return u"global";
    case Instancing::Creatable:
        return u"creatable";
    case Instancing::NotCreatable:
        return u"not creatable";
    case Instancing::Internal:
        break;
    }
    return u"internal";
}

String CatalogueEntry::progId() const {
    return isCreatable() ? String(kLibraryName) + u"." + String(name) : String();
}

std::span<const CatalogueEntry> catalogue() {
    return kCatalogue;
}

const CatalogueEntry* findClass(StringView name) {
    for (const CatalogueEntry& entry : kCatalogue)
        if (automation::equalsIgnoreCase(entry.name, name)) return &entry;
    return nullptr;
}

const CatalogueEntry* findProgId(StringView progId) {
    for (const CatalogueEntry& entry : kCatalogue) {
        const String own = entry.progId();
        if (own.empty()) continue;
        if (automation::equalsIgnoreCase(own, progId) || automation::equalsIgnoreCase(own + u".1", progId))
            return &entry;
    }
    return nullptr;
}

} // namespace tarncom32::frame
