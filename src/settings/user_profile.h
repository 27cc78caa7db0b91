#pragma once

#include "automation/members.h"
#include "frame/enumerations.h"
#include "platform/platform.h"

namespace tarncom32::settings {

class UserProfileEntries;

/// A named set of texts that an add-in keeps in the registry: one string value for each entry, in the key
/// `ProfilePath` & `ProfileName` of `RegistryHive`. Entries live in memory until they are saved, and retrieving
/// replaces them. The profile owns its collection and the collection its entries; both look back without owning.
///
/// Saving, retrieving and deleting validate the profile first and raise -2147221504 (0x80040000) with a text that says
/// what is missing: another storage method than the registry before a missing path before a missing name. They raise
/// the registry's errors (1000 to 1003) as well.
class UserProfile final : public automation::Described<UserProfile> {
public:
    static constexpr automation::StringView kClassName = u"UserProfile";
    static const automation::ClassInfo& describe();

    explicit UserProfile(platform::Platform& platform);

    /// Only `STORAGE_REGISTRY`, the default, can be saved to; any other method can be set.
    frame::PROFILE_STORAGE_METHOD storageMethod() { return storageMethod_; }
    void setStorageMethod(frame::PROFILE_STORAGE_METHOD eMethod) { storageMethod_ = eMethod; }

    /// The registry path of the product's settings. What is assigned gets a "\" at its end if it has none, so that an
    /// empty path becomes "\" (which is no valid key); it is empty until something is assigned.
    automation::String profilePath() { return profilePath_; }
    void setProfilePath(automation::StringView sPath);

    /// The name of the profile's own key below `ProfilePath`.
    automation::String profileName() { return profileName_; }
    void setProfileName(automation::StringView sName) { profileName_ = sName; }

    /// The root key; `HKEY_CURRENT_USER` at first.
    frame::REGISTRY_HIVE registryHive() { return registryHive_; }
    void setRegistryHive(frame::REGISTRY_HIVE eHive) { registryHive_ = eHive; }

    /// The entries: always the same object.
    automation::Ref<UserProfileEntries> profileEntries();

    /// Saves every entry; true when each said so. False for a profile without entries, valid or not.
    automation::Boolean saveSettings();

    /// Replaces the entries by the values in the registry, in its order. False, and the entries stay, when there are
    /// none. A value's name and data end at a pair of backslashes, and the values at the first that is longer than 255
    /// bytes.
    automation::Boolean retrieveSettings();

    /// What `DeleteSetting` of the entry of that name returns; false when there is no such entry. The entry stays.
    automation::Boolean deleteProfileEntry(automation::StringView sEntryName);

    /// Raises -2147221504 unless entries can be saved and retrieved.
    void validate() const;
    /// The profile's key: its path and its name.
    automation::String keyPath() const { return profilePath_ + profileName_; }
    /// `RegistryHive` as the registry's own number.
    std::int32_t rootKey() const { return static_cast<std::int32_t>(registryHive_); }

protected:
    ~UserProfile() override;

private:
    platform::Platform& platform_;
    frame::PROFILE_STORAGE_METHOD storageMethod_ = frame::PROFILE_STORAGE_METHOD::STORAGE_REGISTRY;
    automation::String profilePath_;
    automation::String profileName_;
    frame::REGISTRY_HIVE registryHive_ = frame::REGISTRY_HIVE::HKEY_CURRENT_USER;
    automation::Ref<UserProfileEntries> entries_;
};

} // namespace tarncom32::settings
