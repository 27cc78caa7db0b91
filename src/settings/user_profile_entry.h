#pragma once

#include "automation/members.h"
#include "settings/user_profile.h"

namespace tarncom32::settings {

/// One setting of a profile: a name and a text. Saving, retrieving and deleting raise what `UserProfile` says, and 91
/// when the entry was removed or the profile has gone.
class UserProfileEntry final : public automation::Described<UserProfileEntry> {
public:
    static constexpr automation::StringView kClassName = u"UserProfileEntry";
    static const automation::ClassInfo& describe();

    /// An entry that looks at its collection through `owner`, which is empty once the collection has gone.
    UserProfileEntry(platform::Platform& platform, std::shared_ptr<UserProfileEntries*> owner);

    /// The profile whose collection holds the entry; Nothing when the entry was removed or the profile has gone.
    automation::Ref<UserProfile> containingProfile();

    /// The name of the entry's value in the registry; empty until it is given one.
    automation::String name() { return name_; }
    /// Changes the name, also the one by which the collection finds the entry. Raises 457 when another entry has that
    /// name, without regard to case: the entry has the new name then, and is found by none.
    void setName(automation::StringView sName);

    /// The setting's text, in memory only until it is saved.
    automation::String value() { return value_; }
    void setValue(automation::StringView sValue) { value_ = sValue; }

    /// Stores the value, with its key where that is missing; true.
    automation::Boolean saveSetting();

    /// Reads the value; true. One that is missing is created empty.
    automation::Boolean retrieveSetting();

    /// Deletes the subkey of the entry's name from the profile's key; whether that succeeded. The value that
    /// `SaveSetting` stored is no subkey: it stays, and the result is false. This is meant; whoever wants the value
    /// gone saves an empty one.
    automation::Boolean deleteSetting();

    /// Called by the collection when it no longer holds the entry.
    void leave() { owner_.reset(); }

    /// The text that the collection knows the entry by: never the same for two entries, and never a number.
    const automation::String& identity() const { return identity_; }

private:
    /// The profile, validated. Raises 91 when there is none.
    automation::Ref<UserProfile> validProfile();

    platform::Platform& platform_;
    std::shared_ptr<UserProfileEntries*> owner_; ///< null once the entry was removed
    automation::String identity_;
    automation::String name_;
    automation::String value_;
};

} // namespace tarncom32::settings
