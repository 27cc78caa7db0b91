#include "library/catalogue.h"

#include "files/common_dlg.h"
#include "files/file_operations.h"
#include "frame/report.h"
#include "settings/user_profile.h"
#include "settings/user_profile_entries.h"
#include "text/string_functions.h"
#include "visio/visio_functions.h"

namespace tarncom32::library {

using automation::ObjectRef;
using automation::String;
using automation::StringView;
using automation::operator""_guid;
using frame::Instancing;

namespace {

/// Carries the public enumerations in the type library: it has no members and no instances.
struct Enums {
    static constexpr StringView kClassName = u"Enums";
    static const automation::ClassInfo& describe() {
        static const automation::ClassInfo info(kClassName, u"Carries the public enumerations; no members.",
                                                "dd8b3fa3-5e14-4470-824c-2bb844b4f396"_guid,
                                                "f1c27983-ed9d-40ee-80a4-b662d4a706b8"_guid, {});
        return info;
    }
};

template <class C>
constexpr CatalogueEntry notCreatable() {
    return {C::kClassName, Instancing::NotCreatable, {}, &C::describe};
}

template <class C>
constexpr CatalogueEntry creatable(Instancing instancing = Instancing::Creatable) {
    return {C::kClassName, instancing, {}, &C::describe, [](platform::Platform& platform) -> ObjectRef {
                return automation::make<C>(platform);
            }};
}

template <class C>
constexpr CatalogueEntry global() {
    return creatable<C>(Instancing::Global);
}

/// A class that is not built yet.
constexpr CatalogueEntry planned(StringView name, Instancing instancing, StringView plan) {
    return {name, instancing, plan};
}

constexpr CatalogueEntry kCatalogue[] = {
    global<visio::VisioFunctions>(),
    global<text::StringFunctions>(),
    planned(u"ArrayFunctions", Instancing::Global,
            u"Arrays of Visio formulas and drops, and the sort of a variant array."),
    global<files::FileOperations>(),
    planned(u"XMLFunctions", Instancing::Global, u"Questions to XML documents, and their construction."),
    planned(u"WinAPIFunctions", Instancing::Global, u"Colour depth of the display."),
    planned(u"PowerVBFunctions", Instancing::Global, u"Window subclassing, and weak and strong object references."),
    planned(u"ProgressBar", Instancing::Creatable, u"A progress display with two bars and a cancel button."),
    planned(u"RecycleBin", Instancing::Creatable, u"Deletes Visio objects once no events are pending."),
    planned(u"MRUList", Instancing::Creatable, u"A list of recently used files on Visio's menus."),
    creatable<files::CommonDlg>(),
    creatable<settings::UserProfile>(),
    planned(u"DualCaptionVisioMenuItem", Instancing::Creatable,
            u"A Visio menu item that toggles between two captions."),
    notCreatable<settings::UserProfileEntries>(),
    notCreatable<settings::UserProfileEntry>(),
    notCreatable<Enums>(),
    planned(u"C_MRUItem", Instancing::Internal, u"An item of a list of recently used files."),
    planned(u"C_MRUItems", Instancing::Internal, u"The items of a list of recently used files."),
    planned(u"frmProgressBarForm", Instancing::Internal, u"The window of a progress display."),
};

} // namespace

String CatalogueEntry::progId() const {
    return isCreatable() ? String(frame::kLibraryName) + u"." + String(name) : String();
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

const frame::PublishedLibrary& publishedLibrary() {
    static const frame::PublishedLibrary library = [] {
        frame::PublishedLibrary published{frame::kLibraryName, u"TarnCom32 1.0 component library for Visio add-ins",
                                          "902d63e7-23e1-477a-ab37-9ec6d8441d4b"_guid, frame::enumerations(),
                                          frame::records()};
        for (const CatalogueEntry& entry : kCatalogue)
            if (entry.isBuilt() && entry.instancing != Instancing::Internal)
                published.classes.push_back({&entry.describe(), entry.instancing});
        return published;
    }();
    return library;
}

} // namespace tarncom32::library
