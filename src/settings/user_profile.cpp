#include "settings/user_profile.h"

#include "settings/registry_operations.h"
#include "settings/user_profile_entries.h"

namespace tarncom32::settings {

using automation::Boolean;
using automation::ClassInfo;
using automation::in;
using automation::Ref;
using automation::String;
using automation::StringView;
using automation::operator""_guid;

namespace member = automation::member;

namespace {

constexpr StringView kLevelSeparator = u"\\";
constexpr StringView kItemSeparator = u"\\\\";
/// The first number that objects may use for their own errors.
constexpr auto kObjectError = static_cast<std::int32_t>(0x80040000);

constexpr StringView kProfilePathHelp = u"The registry path of the product's settings; ends in a backslash, which is "
                                        u"added where it is missing.";

} // namespace

const ClassInfo& UserProfile::describe() {
    using P = UserProfile;
    static const ClassInfo info(
        kClassName, u"A named profile of settings, kept in the registry.", "b23b22af-8cfa-4cd8-a79e-5af021b0f3e1"_guid,
        "ac4b0b1a-52f3-4f04-8d9c-e44f376230c0"_guid,
        {
            member::get<&P::storageMethod>(1, u"StorageMethod", {}, u"Where the settings live; only the registry can."),
            member::let<&P::setStorageMethod>(1, u"StorageMethod", {in(u"eStorageMethod")},
                                              u"Where the settings live; only the registry can."),
            member::get<&P::profilePath>(2, u"ProfilePath", {}, kProfilePathHelp),
            member::let<&P::setProfilePath>(2, u"ProfilePath", {in(u"sProfilePath")}, kProfilePathHelp),
            member::get<&P::profileName>(3, u"ProfileName", {}, u"The name of the profile's key below ProfilePath."),
            member::let<&P::setProfileName>(3, u"ProfileName", {in(u"sProfileName")},
                                            u"The name of the profile's key below ProfilePath."),
            member::get<&P::registryHive>(4, u"RegistryHive", {}, u"The root key of the registry."),
            member::let<&P::setRegistryHive>(4, u"RegistryHive", {in(u"eRegistryHive")},
                                             u"The root key of the registry."),
            member::get<&P::profileEntries>(5, u"ProfileEntries", {}, u"The profile's entries."),
            member::method<&P::saveSettings>(6, u"SaveSettings", {},
                                             u"Saves every entry; False for a profile without entries."),
            member::method<&P::retrieveSettings>(7, u"RetrieveSettings", {},
                                                 u"Replaces the entries by those in the registry; False when there are "
                                                 u"none."),
            member::method<&P::deleteProfileEntry>(8, u"DeleteProfileEntry", {in(u"sEntryName")},
                                                   u"Calls DeleteSetting of the entry of that name; False when there "
                                                   u"is no such entry."),
        });
    return info;
}

UserProfile::UserProfile(platform::Platform& platform)
    : platform_(platform), entries_(automation::make<UserProfileEntries>(platform, *this)) {}

UserProfile::~UserProfile() {
    entries_->detach();
}

void UserProfile::setProfilePath(StringView sPath) {
    profilePath_ = sPath;
    if (!profilePath_.ends_with(kLevelSeparator)) profilePath_ += kLevelSeparator;
}

Ref<UserProfileEntries> UserProfile::profileEntries() {
    return entries_;
}

void UserProfile::validate() const {
    const auto refuse = [](StringView text) { throw automation::Error(kObjectError, text); };
    if (storageMethod_ != frame::PROFILE_STORAGE_METHOD::STORAGE_REGISTRY)
        refuse(u"Only Registry storage is supported at this time.");
    if (profilePath_.empty()) refuse(u"No profile path entered.  Please enter a profile path.");
    if (profileName_.empty()) refuse(u"No profile name entered.  Please enter a profile name.");
}

Boolean UserProfile::saveSettings() {
    if (entries_->count() == 0) return false;
    validate();
    bool saved = true;
    automation::forEach(*entries_, [&](const automation::Variant& item) {
        const Ref<automation::Object> entry = automation::toObject(item);
        if (!static_cast<UserProfileEntry&>(*entry).saveSetting().isTrue()) saved = false;
    });
    return saved;
}

Boolean UserProfile::retrieveSettings() {
    validate();
    const Ref<automation::Collection> values =
        RegistryOperations(platform_).getRegistryValues(rootKey(), keyPath(), false);
    if (values->size() == 0) return false;
    entries_->clearAllEntries();
    for (std::size_t i = 0; i < values->size(); ++i) {
        const StringView text = *(*values)[i].as<String>();
        const std::size_t nameEnd = text.find(kItemSeparator);
        const std::size_t start = nameEnd + kItemSeparator.size();
        const Ref<UserProfileEntry> entry = entries_->createNewItem();
        entry->setName(text.substr(0, nameEnd));
        entry->setValue(text.substr(start, text.find(kItemSeparator, start) - start));
    }
    return true;
}

Boolean UserProfile::deleteProfileEntry(StringView sEntryName) {
    validate();
    const Ref<UserProfileEntry> entry = entries_->find(sEntryName);
    return entry ? entry->deleteSetting() : Boolean(false);
}

} // namespace tarncom32::settings
