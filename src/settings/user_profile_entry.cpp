#include "settings/user_profile_entry.h"

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

/// Not a number, because collections are asked for entries by texts that read as one.
String newIdentity() {
    static std::atomic<long long> last{0};
    return u"entry " + automation::decimalText(++last);
}

constexpr StringView kNameHelp =
    u"The entry's name: that of its value in the registry, and one of its kind in the profile.";

} // namespace

const ClassInfo& UserProfileEntry::describe() {
    using E = UserProfileEntry;
    static const ClassInfo info(
        kClassName, u"A named setting of a user profile.", "ab75a715-3413-474f-ab30-b4dcfdb891df"_guid,
        "f1c60574-2b93-4130-84fe-1a3d937be0d6"_guid,
        {
            member::get<&E::containingProfile>(1, u"ContainingProfile", {}, u"The profile that holds the entry."),
            member::get<&E::name>(2, u"Name", {}, kNameHelp),
            member::let<&E::setName>(2, u"Name", {in(u"sName")}, kNameHelp),
            member::get<&E::value>(3, u"Value", {}, u"The setting's text."),
            member::let<&E::setValue>(3, u"Value", {in(u"sValue")}, u"The setting's text."),
            member::method<&E::saveSetting>(4, u"SaveSetting", {}, u"Writes the value to the registry."),
            member::method<&E::retrieveSetting>(5, u"RetrieveSetting", {},
                                                u"Reads the value from the registry, where it is created empty if it "
                                                u"is missing."),
            member::method<&E::deleteSetting>(6, u"DeleteSetting", {},
                                              u"Deletes the subkey of the entry's name; False when there is none. The "
                                              u"entry's value stays."),
        });
    return info;
}

UserProfileEntry::UserProfileEntry(platform::Platform& platform, std::shared_ptr<UserProfileEntries*> owner)
    : platform_(platform), owner_(std::move(owner)), identity_(newIdentity()) {}

Ref<UserProfile> UserProfileEntry::containingProfile() {
    return owner_ && *owner_ ? (*owner_)->containingProfile() : nullptr;
}

void UserProfileEntry::setName(StringView sName) {
    const String oldName = std::exchange(name_, String(sName));
    if (owner_ && *owner_) (*owner_)->rename(*this, oldName);
}

Ref<UserProfile> UserProfileEntry::validProfile() {
    Ref<UserProfile> profile = containingProfile();
    automation::deref(profile).validate();
    return profile;
}

Boolean UserProfileEntry::saveSetting() {
    const Ref<UserProfile> profile = validProfile();
    RegistryOperations(platform_).saveProfileValue(profile->keyPath(), name_, value_, profile->rootKey());
    return true;
}

Boolean UserProfileEntry::retrieveSetting() {
    const Ref<UserProfile> profile = validProfile();
    value_ = RegistryOperations(platform_).retrieveProfileValue(profile->keyPath(), name_, profile->rootKey());
    return true;
}

Boolean UserProfileEntry::deleteSetting() {
    const Ref<UserProfile> profile = validProfile();
    return RegistryOperations(platform_).deleteRegistryKey(profile->rootKey(), profile->keyPath(), name_, false);
}

} // namespace tarncom32::settings
