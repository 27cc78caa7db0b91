#include "settings/user_profile_entries.h"

#include "frame/report.h"

namespace tarncom32::settings {

using automation::ClassInfo;
using automation::Collection;
using automation::in;
using automation::ObjectRef;
using automation::Ref;
using automation::String;
using automation::StringView;
using automation::Variant;
using automation::operator""_guid;

namespace member = automation::member;

namespace {

Ref<UserProfileEntry> toEntry(const Variant& item) {
    return Ref<UserProfileEntry>(static_cast<UserProfileEntry*>(automation::toObject(item).get()));
}

} // namespace

const ClassInfo& UserProfileEntries::describe() {
    using E = UserProfileEntries;
    static const ClassInfo info(
        kClassName, u"The entries of a user profile.", "81941e1e-4df1-4f1a-b9fd-0204245d6965"_guid,
        "2c11978a-bf05-4679-81e3-e63d54411b3f"_guid,
        {
            member::get<&E::containingProfile>(1, u"ContainingProfile", {}, u"The profile that the entries belong to."),
            member::method<&E::createNewItem>(2, u"CreateNewItem", {}, u"A new entry, added at the end."),
            member::method<&E::removeItem>(3, u"RemoveItem", {in(u"oObject")},
                                           u"Takes an entry out; the registry keeps its value."),
            member::get<&E::item>(automation::kDispidValue, u"Item", {in(u"vIndexKey")},
                                  u"The entry at a position (a number) or of a name (a text); Nothing when there is no "
                                  u"such entry."),
            member::get<&E::count>(5, u"Count", {}, u"The number of entries."),
            member::newEnum<&E::newEnum>(u"NewEnum"),
            member::method<&E::clearAllEntries>(7, u"ClearAllEntries", {},
                                                u"Takes every entry out; the registry keeps their values."),
        });
    return info;
}

UserProfileEntries::UserProfileEntries(platform::Platform& platform, UserProfile& profile)
    : platform_(platform), profile_(&profile), link_(std::make_shared<UserProfileEntries*>(this)),
      entries_(automation::make<Collection>()), nameIndex_(automation::make<Collection>()) {}

UserProfileEntries::~UserProfileEntries() {
    *link_ = nullptr;
}

Ref<UserProfile> UserProfileEntries::containingProfile() {
    return Ref<UserProfile>(profile_);
}

Ref<UserProfileEntry> UserProfileEntries::createNewItem() {
    Ref<UserProfileEntry> created;
    frame::reportAndStop(platform_.messageBox, describe(), [&] {
        const Ref<UserProfileEntry> entry = automation::make<UserProfileEntry>(platform_, link_);
        entries_->add(Variant(entry), entry->identity());
        created = entry;
    });
    return created;
}

void UserProfileEntries::removeItem(Ref<UserProfileEntry> oObject) {
    frame::reportAndStop(platform_.messageBox, describe(), [&] {
        if (!oObject) return;
        entries_->remove(oObject->identity());
        oObject->leave();
        nameIndex_->remove(oObject->name());
    });
}

Ref<UserProfileEntry> UserProfileEntries::item(const Variant& vIndexKey) {
    Ref<UserProfileEntry> found;
    frame::silently([&] {
        found = isNumeric(vIndexKey) ? toEntry(entries_->item(vIndexKey)) : find(automation::toText(vIndexKey));
    });
    return found;
}

Ref<UserProfileEntry> UserProfileEntries::find(StringView name) {
    Ref<UserProfileEntry> found;
    frame::silently([&] { found = toEntry(entries_->item(nameIndex_->item(name))); });
    return found;
}

void UserProfileEntries::clearAllEntries() {
    // From the end, where taking one out moves no other. A report lets others come to the list meanwhile.
    for (std::size_t left = entries_->size(); left > 0 && entries_->size() > 0; --left)
        removeItem(toEntry((*entries_)[entries_->size() - 1]));
}

void UserProfileEntries::rename(UserProfileEntry& entry, StringView oldName) {
    frame::silently([&] { nameIndex_->remove(oldName); });
    if (const String name = entry.name(); !name.empty()) nameIndex_->add(entry.identity(), name);
}

} // namespace tarncom32::settings
