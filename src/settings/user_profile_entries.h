#pragma once

#include "automation/collection.h"
#include "settings/user_profile_entry.h"

namespace tarncom32::settings {

/// The entries of a profile, in the order of their creation. An entry that has a name can be found by it, without
/// regard to case.
class UserProfileEntries final : public automation::Described<UserProfileEntries> {
public:
    static constexpr automation::StringView kClassName = u"UserProfileEntries";
    static const automation::ClassInfo& describe();

    /// The entries of `profile`, which detaches the collection before it goes.
    UserProfileEntries(platform::Platform& platform, UserProfile& profile);

    /// The profile that the entries belong to; Nothing when that has gone.
    automation::Ref<UserProfile> containingProfile();

    /// A new entry without name and value, added at the end. Reports its failures, and then returns Nothing.
    automation::Ref<UserProfileEntry> createNewItem();

    /// Takes an entry out, which then belongs to no profile; does nothing for Nothing. The registry keeps its value.
    /// Reports its failures: an entry of another collection stays where it is; an entry without a name goes, and the
    /// report is about the name that is not in the index. Two entries that were given one name share its place in the
    /// index, so that removing either makes the name unknown.
    void removeItem(automation::Ref<UserProfileEntry> oObject);

    /// The entry at a position, counted from 1, for a number; the entry of that name for a text. A text that reads as
    /// a number is neither, even where an entry has that name. Silent: Nothing when there is no such entry.
    automation::Ref<UserProfileEntry> item(const automation::Variant& vIndexKey);

    /// How many entries there are, named or not.
    std::int32_t count() { return entries_->count(); }

    /// An enumerator of the entries in the order of their creation.
    std::unique_ptr<automation::Enumerator> newEnum() { return entries_->newEnum(); }

    /// Takes every entry out, each as `RemoveItem` does it. The registry keeps its values.
    void clearAllEntries();

    /// The entry of that name; Nothing when the index has none.
    automation::Ref<UserProfileEntry> find(automation::StringView name);
    /// Makes `entry`, called `oldName` so far, known by its new name. Raises 457 when that name is taken: then the
    /// entry is known by no name.
    void rename(UserProfileEntry& entry, automation::StringView oldName);
    /// Called by the profile when it goes.
    void detach() { profile_ = nullptr; }

protected:
    ~UserProfileEntries() override;

private:
    platform::Platform& platform_;
    UserProfile* profile_;
    /// Lets entries outlive the collection: they look at it through this, and it is empty from then on.
    std::shared_ptr<UserProfileEntries*> link_;
    automation::Ref<automation::Collection> entries_;   ///< entries, under their identities
    automation::Ref<automation::Collection> nameIndex_; ///< identities, under the entries' names
};

} // namespace tarncom32::settings
