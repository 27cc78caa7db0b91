#include "settings/user_profile.h"
#include "settings/user_profile_entries.h"
#include "settings_fixture.h"
#include "support/table.h"

#include <gmock/gmock.h>

namespace tarncom32::settings {
namespace {

using namespace automation;
using frame::PROFILE_STORAGE_METHOD;
using std::string_literals::operator""s;

class UserProfileTest : public SettingsTest {
protected:
    UserProfileTest() {
        profile_->setProfilePath(tests::testKey() + u"\\Product");
        profile_->setProfileName(u"Default");
    }

    Ref<UserProfileEntry> add(StringView name, StringView value = {}) {
        const Ref<UserProfileEntry> entry = entries_->createNewItem();
        entry->setName(name);
        entry->setValue(value);
        return entry;
    }
    /// The entries as "name=value".
    std::vector<String> contents() {
        std::vector<String> texts;
        forEach(*entries_, [&](const Variant& item) {
            const ObjectRef entry = toObject(item);
            texts.push_back(toText(entry->get(u"Name")) + u"=" + toText(entry->get(u"Value")));
        });
        return texts;
    }
    /// What the boxes said so far, without the library's name; then forgets them.
    std::vector<String> reports() {
        std::vector<String> texts;
        for (const auto& shown : fakes_.messageBox.shown)
            texts.push_back(shown.text);
        fakes_.messageBox.shown.clear();
        return texts;
    }

    Ref<UserProfile> profile_ = make<UserProfile>(platform_);
    Ref<UserProfileEntries> entries_ = profile_->profileEntries();
};

TEST_F(UserProfileTest, EndsThePathInABackslash) {
    const std::pair<StringView, StringView> paths[] = {
        {u"A\\B", u"A\\B\\"}, {u"A\\", u"A\\"}, {u"A\\\\", u"A\\\\"}, {u"A/", u"A/\\"}, {u"", u"\\"}};
    for (const auto& [assigned, kept] : paths) {
        profile_->setProfilePath(assigned);
        EXPECT_EQ(profile_->profilePath(), kept);
    }
    // A path that was empty counts as entered, but names no key.
    add(u"Width");
    EXPECT_EQ(errorOf([&] { profile_->saveSettings(); }), registry_errors::CannotCreate);
}

TEST_F(UserProfileTest, EverySavingRetrievingAndDeletingMemberValidatesInOrder) {
    using enum PROFILE_STORAGE_METHOD;
    const std::tuple<PROFILE_STORAGE_METHOD, bool, bool, std::string> faults[] = {
        {STORAGE_XML, false, false, "Only Registry storage is supported at this time."},
        {PROFILE_STORAGE_METHOD{-1}, true, true, "Only Registry storage is supported at this time."},
        {STORAGE_REGISTRY, false, false, "No profile path entered.  Please enter a profile path."},
        {STORAGE_REGISTRY, true, false, "No profile name entered.  Please enter a profile name."},
    };
    for (const auto& [method, path, name, expected] : faults) {
        const Ref<UserProfile> profile = make<UserProfile>(platform_);
        profile->setStorageMethod(method);
        if (path) profile->setProfilePath(tests::testKey());
        if (name) profile->setProfileName(u"Default");
        EXPECT_FALSE(profile->saveSettings().isNonZero()) << "without entries nothing is validated";
        const Ref<UserProfileEntry> entry = profile->profileEntries()->createNewItem();
        entry->setName(u"Width");
        const std::function<void()> calls[] = {
            [&] { profile->saveSettings(); }, [&] { profile->retrieveSettings(); },
            [&] { entry->saveSetting(); },    [&] { entry->retrieveSetting(); },
            [&] { entry->deleteSetting(); },  [&] { profile->deleteProfileEntry(u"Width"); }};
        for (const auto& call : calls)
            EXPECT_EQ(failureOf(call), "-2147221504 " + expected);
    }
    EXPECT_THAT(reports(), testing::IsEmpty());
}

TEST_F(UserProfileTest, SavesAndRetrievesAllEntries) {
    add(u"Colour", u"rouge vif");
    add(u"Largeur", u"12,5");
    add(u"Taille", u"");
    EXPECT_TRUE(profile_->saveSettings().isTrue());
    add(u"Unsaved", u"x");
    EXPECT_TRUE(profile_->retrieveSettings().isTrue());
    EXPECT_THAT(contents(), testing::ElementsAre(u"Colour=rouge vif", u"Largeur=12,5", u"Taille="));
    registry_.refusesWrites = true;
    EXPECT_EQ(errorOf([&] { profile_->saveSettings(); }), registry_errors::ItemMissing);
    EXPECT_THAT(reports(), testing::IsEmpty());
}

TEST_F(UserProfileTest, RetrievingCutsNameAndDataAtTwoBackslashesAndStopsAtALongValue) {
    add(u"Width", u"3");
    EXPECT_FALSE(profile_->retrieveSettings().isNonZero()); // no key
    operations_.createRegistryKey(kRoot, key_);
    EXPECT_FALSE(profile_->retrieveSettings().isNonZero()); // no values
    EXPECT_THAT(contents(), testing::ElementsAre(u"Width=3"));
    store("A", "\\\\server\\share\0"s); // data that begins with the separator
    store("B", "x\\\\y\\\\z\0"s);
    store("C", std::string(255, 'x') + '\0');
    store("D", "lost\0"s);
    EXPECT_TRUE(profile_->retrieveSettings().isTrue());
    EXPECT_THAT(contents(), testing::ElementsAre(u"A=", u"B=x"));
}

TEST_F(UserProfileTest, OneEntrySavesRetrievesAndCannotDeleteItsOwnValue) {
    const Ref<UserProfileEntry> entry = add(u"Width", u"3");
    EXPECT_TRUE(entry->saveSetting().isTrue());
    store("Width", "4\0"s);
    EXPECT_TRUE(entry->retrieveSetting().isTrue());
    EXPECT_EQ(entry->value(), u"4");

    EXPECT_FALSE(profile_->deleteProfileEntry(u"width").isNonZero());
    EXPECT_EQ(stored("Width"), "4\0"s);
    operations_.createRegistryKey(kRoot, key_ + u"\\Width");
    EXPECT_TRUE(profile_->deleteProfileEntry(u"WIDTH").isTrue());
    EXPECT_EQ(operations_.openRegistryKey(kRoot, key_ + u"\\Width", false), nullptr);
    EXPECT_FALSE(profile_->deleteProfileEntry(u"Height").isNonZero());
    EXPECT_EQ(entries_->count(), 1) << "the entry stays";
}

TEST_F(UserProfileTest, FindsEntriesByPositionOrNameAndByNothingElse) {
    add(u"Width", u"first");
    add(u"2", u"second");
    add(u"", u"third");
    using Case = std::pair<Variant, StringView>;
    const auto cases = tests::table(Case(std::int16_t{1}, u"first"), Case(2.5, u"second"), Case(std::int32_t{0}, u"-"),
                                    Case(std::int32_t{4}, u"-"), Case(u"WIDTH", u"first"), Case(u"2", u"-"),
                                    Case(u"", u"-"), Case(u"Height", u"-"), Case(Variant(), u"-"), Case(Null{}, u"-"),
                                    Case(Boolean(true), u"-"), Case(ObjectRef(), u"-"));
    for (const auto& [index, expected] : cases) {
        const Ref<UserProfileEntry> found = entries_->item(index);
        EXPECT_EQ(found ? found->value() : u"-", expected) << static_cast<int>(index.type());
    }
    EXPECT_EQ(toObject(entries_->get(u"", u"width")), entries_->item(u"Width")) << "the default member";
    EXPECT_THAT(reports(), testing::IsEmpty());
}

TEST_F(UserProfileTest, ADuplicateNameStaysWithoutAPlaceInTheIndex) {
    const Ref<UserProfileEntry> first = add(u"Width", u"first");
    const Ref<UserProfileEntry> second = add(u"Height", u"second");
    EXPECT_EQ(errorOf([&] { second->setName(u"width"); }), errors::DuplicateKey);
    EXPECT_EQ(second->name(), u"width");
    EXPECT_EQ(entries_->item(u"width"), first);
    EXPECT_EQ(entries_->item(u"Height"), nullptr);

    // The name that it takes out of the index when it is renamed is the other one's.
    second->setName(u"Depth");
    EXPECT_EQ(entries_->item(u"Width"), nullptr);
    first->setName(u"Width");
    EXPECT_EQ(entries_->item(u"Width"), first);
    first->setName(u"WIDTH"); // its own name in another case
    EXPECT_EQ(entries_->item(u"Width"), first);
    first->setName(u"");
    EXPECT_EQ(entries_->item(u"Width"), nullptr);
}

TEST_F(UserProfileTest, RemovingReportsWhatIsNotInTheIndexOrNotInTheList) {
    const Ref<UserProfileEntry> named = add(u"Width", u"3");
    const Ref<UserProfileEntry> unnamed = add(u"");
    named->saveSetting();
    const Ref<UserProfile> other = make<UserProfile>(platform_);
    const Ref<UserProfileEntry> stranger = other->profileEntries()->createNewItem();
    stranger->setName(u"Width");
    const String report = u"Problem in UserProfileEntries.RemoveItem\r\nError Number: 5\r\nError Description: "
                          u"Invalid procedure call or argument";

    entries_->removeItem(nullptr);
    EXPECT_THAT(reports(), testing::IsEmpty());
    entries_->removeItem(stranger); // must not touch the entry of that name here
    EXPECT_THAT(reports(), testing::ElementsAre(report));
    EXPECT_EQ(entries_->item(u"Width"), named);
    EXPECT_EQ(other->profileEntries()->count(), 1);

    entries_->removeItem(unnamed);
    EXPECT_THAT(reports(), testing::ElementsAre(report));
    EXPECT_THAT(contents(), testing::ElementsAre(u"Width=3"));
    entries_->removeItem(named);
    EXPECT_THAT(reports(), testing::IsEmpty());
    EXPECT_EQ(entries_->count(), 0);
    EXPECT_EQ(stored("Width"), "3\0"s) << "the registry is not touched";

    // A removed entry has no profile, and no part in the index.
    EXPECT_EQ(named->containingProfile(), nullptr);
    EXPECT_EQ(errorOf([&] { named->saveSetting(); }), errors::ObjectNotSet);
    named->setName(u"Height");
    add(u"Height", u"new");
    EXPECT_EQ(entries_->item(u"Height")->value(), u"new");

    add(u"");
    add(u"Width");
    entries_->clearAllEntries();
    EXPECT_EQ(entries_->count(), 0);
    EXPECT_EQ(reports().size(), 1u) << "of the unnamed one";
    add(u"Width"); // the name is free again
}

TEST_F(UserProfileTest, BackReferencesOwnNothingAndOutliveTheirTargetSafely) {
    const std::size_t before = Object::liveCount();
    Ref<UserProfile> profile = make<UserProfile>(platform_);
    Ref<UserProfileEntries> entries = profile->profileEntries();
    const Ref<UserProfileEntry> kept = entries->createNewItem();
    EXPECT_EQ(kept->containingProfile(), profile);

    profile = nullptr;
    EXPECT_EQ(entries->containingProfile(), nullptr);
    EXPECT_EQ(errorOf([&] { kept->saveSetting(); }), errors::ObjectNotSet);
    entries->createNewItem();
    kept->setName(u"Width");
    EXPECT_EQ(entries->item(u"Width"), kept);

    entries = nullptr;
    EXPECT_EQ(Object::liveCount(), before + 1) << "of the component only the entry that is held is left";
    kept->setName(u"Height");
}

} // namespace
} // namespace tarncom32::settings
