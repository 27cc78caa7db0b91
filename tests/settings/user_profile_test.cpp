#include "library/library.h"
#include "settings/user_profile.h"
#include "settings/user_profile_entries.h"
#include "settings_fixture.h"

#include <gmock/gmock.h>

namespace tarncom32::settings {
namespace {

using automation::Boolean;
using automation::make;
using automation::Object;
using automation::ObjectRef;
using automation::Ref;
using automation::String;
using automation::StringView;
using automation::Variant;
using frame::PROFILE_STORAGE_METHOD;
using std::string_literals::operator""s;

namespace errors = automation::errors;

constexpr auto kObjectError = static_cast<std::int32_t>(0x80040000);

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
        automation::forEach(*entries_, [&](const Variant& item) {
            Object& entry = automation::deref(automation::toObject(item));
            texts.push_back(automation::toText(entry.get(u"Name")) + u"=" + automation::toText(entry.get(u"Value")));
        });
        return texts;
    }
    /// What the boxes said so far, without the library's name; then forgets them.
    std::vector<String> reports() {
        std::vector<String> texts;
        for (const auto& shown : surroundings_.messageBox.shown)
            texts.push_back(shown.text);
        surroundings_.messageBox.shown.clear();
        return texts;
    }

    Ref<UserProfile> profile_ = make<UserProfile>(platform_);
    Ref<UserProfileEntries> entries_ = profile_->profileEntries();
};

TEST_F(UserProfileTest, KeepsItsPropertiesAndEndsThePathInABackslash) {
    const Ref<UserProfile> fresh = make<UserProfile>(platform_);
    EXPECT_EQ(fresh->storageMethod(), PROFILE_STORAGE_METHOD::STORAGE_REGISTRY);
    EXPECT_EQ(fresh->registryHive(), frame::REGISTRY_HIVE::HKEY_CURRENT_USER);
    EXPECT_EQ(fresh->profilePath(), u"");
    EXPECT_EQ(fresh->profileName(), u"");
    EXPECT_EQ(fresh->profileEntries(), fresh->profileEntries());
    const struct {
        StringView assigned;
        StringView kept;
    } paths[] = {
        {u"Software\\Vendor\\Product", u"Software\\Vendor\\Product\\"},
        {u"Software\\Vendor\\Product\\", u"Software\\Vendor\\Product\\"},
        {u"Software\\\\", u"Software\\\\"},
        {u"", u"\\"},
        {u"Software/", u"Software/\\"},
    };
    for (const auto& path : paths) {
        fresh->setProfilePath(path.assigned);
        EXPECT_EQ(fresh->profilePath(), path.kept);
    }
    fresh->setProfileName(u"Default\\");
    EXPECT_EQ(fresh->profileName(), u"Default\\");
}

TEST_F(UserProfileTest, EverySavingRetrievingAndDeletingMemberValidatesInOrder) {
    const struct {
        PROFILE_STORAGE_METHOD method;
        bool path;
        bool name;
        StringView expected;
    } faults[] = {
        {PROFILE_STORAGE_METHOD::STORAGE_XML, false, false, u"Only Registry storage is supported at this time."},
        {PROFILE_STORAGE_METHOD::STORAGE_INI, true, true, u"Only Registry storage is supported at this time."},
        {static_cast<PROFILE_STORAGE_METHOD>(-1), true, true, u"Only Registry storage is supported at this time."},
        {PROFILE_STORAGE_METHOD::STORAGE_REGISTRY, false, false,
         u"No profile path entered.  Please enter a profile path."},
        {PROFILE_STORAGE_METHOD::STORAGE_REGISTRY, true, false,
         u"No profile name entered.  Please enter a profile name."},
    };
    for (const auto& fault : faults) {
        const Ref<UserProfile> profile = make<UserProfile>(platform_);
        profile->setStorageMethod(fault.method);
        if (fault.path) profile->setProfilePath(tests::testKey());
        if (fault.name) profile->setProfileName(u"Default");
        EXPECT_FALSE(profile->saveSettings().isNonZero()) << "without entries nothing is validated";
        const Ref<UserProfileEntry> entry = profile->profileEntries()->createNewItem();
        entry->setName(u"Width");
        const std::function<void()> calls[] = {
            [&] { profile->saveSettings(); },
            [&] { profile->retrieveSettings(); },
            [&] { profile->deleteProfileEntry(u"Width"); },
            [&] { entry->saveSetting(); },
            [&] { entry->retrieveSetting(); },
            [&] { entry->deleteSetting(); },
        };
        for (const auto& call : calls) {
            EXPECT_EQ(errorOf(call), kObjectError);
            EXPECT_EQ(textOf(call), fault.expected);
        }
    }
    EXPECT_THAT(reports(), testing::IsEmpty());
}

TEST_F(UserProfileTest, APathThatWasEmptyIsEnteredButNoKey) {
    profile_->setProfilePath(u"");
    add(u"Width", u"3");
    EXPECT_EQ(errorOf([&] { profile_->saveSettings(); }), registry_errors::CannotCreate);
    EXPECT_FALSE(profile_->retrieveSettings().isNonZero());
}

TEST_F(UserProfileTest, SavesAndRetrievesAllEntries) {
    add(u"Colour", u"rouge vif");
    add(u"Largeur", u"12,5");
    add(u"Taille", u"");
    EXPECT_TRUE(profile_->saveSettings().isTrue());
    EXPECT_EQ(stored("Largeur"), "12,5\0"s);

    add(u"Unsaved", u"x");
    EXPECT_TRUE(profile_->retrieveSettings().isTrue());
    EXPECT_THAT(contents(), testing::ElementsAre(u"Colour=rouge vif", u"Largeur=12,5", u"Taille="));
    EXPECT_EQ(entries_->item(u"LARGEUR")->value(), u"12,5");
    EXPECT_THAT(reports(), testing::IsEmpty());
}

TEST_F(UserProfileTest, RetrievingCutsNameAndDataAtTwoBackslashesAndStopsAtALongValue) {
    store("A", "\\\\server\\share\0"s); // data that begins with the separator
    store("B", "x\\\\y\\\\z\0"s);
    store("C", std::string(255, 'x') + '\0');
    store("D", "lost\0"s);
    EXPECT_TRUE(profile_->retrieveSettings().isTrue());
    EXPECT_THAT(contents(), testing::ElementsAre(u"A=", u"B=x"));
}

TEST_F(UserProfileTest, RetrievingNothingKeepsTheEntries) {
    add(u"Width", u"3");
    EXPECT_FALSE(profile_->retrieveSettings().isNonZero()); // no key
    operations_.createRegistryKey(kRoot, key_);
    EXPECT_FALSE(profile_->retrieveSettings().isNonZero()); // no values
    EXPECT_THAT(contents(), testing::ElementsAre(u"Width=3"));
}

TEST_F(UserProfileTest, OneEntrySavesRetrievesAndCannotDeleteItsOwnValue) {
    const Ref<UserProfileEntry> entry = add(u"Width", u"3");
    EXPECT_TRUE(entry->saveSetting().isTrue());
    store("Width", "4\0"s);
    EXPECT_TRUE(entry->retrieveSetting().isTrue());
    EXPECT_EQ(entry->value(), u"4");

    EXPECT_FALSE(entry->deleteSetting().isNonZero());
    EXPECT_FALSE(profile_->deleteProfileEntry(u"width").isNonZero());
    EXPECT_EQ(stored("Width"), "4\0"s);
    operations_.createRegistryKey(kRoot, key_ + u"\\Width");
    EXPECT_TRUE(profile_->deleteProfileEntry(u"WIDTH").isTrue());
    EXPECT_EQ(operations_.openRegistryKey(kRoot, key_ + u"\\Width", false), nullptr);
    EXPECT_FALSE(profile_->deleteProfileEntry(u"Height").isNonZero());
    EXPECT_EQ(entries_->count(), 1) << "the entry stays";
}

TEST_F(UserProfileTest, RetrievingAMissingEntryCreatesItEmpty) {
    const Ref<UserProfileEntry> entry = add(u"Width", u"3");
    EXPECT_TRUE(entry->retrieveSetting().isTrue());
    EXPECT_EQ(entry->value(), u"");
    EXPECT_EQ(stored("Width"), "\0"s);
}

TEST_F(UserProfileTest, FindsEntriesByPositionOrNameAndByNothingElse) {
    add(u"Width", u"first");
    add(u"2", u"second");
    add(u"", u"third");
    const struct {
        const char* what;
        Variant index;
        StringView expected; // "-" for Nothing
    } cases[] = {
        {"position", Variant(std::int16_t{1}), u"first"},
        {"position as a double", Variant(2.5), u"second"},
        {"past the end", Variant(std::int32_t{4}), u"-"},
        {"zero", Variant(std::int32_t{0}), u"-"},
        {"name", Variant(u"Width"), u"first"},
        {"name in other case", Variant(u"WIDTH"), u"first"},
        {"numeric text", Variant(u"1"), u"-"},
        {"numeric text that is a name", Variant(u"2"), u"-"},
        {"other numeric text", Variant(u"1E0"), u"-"},
        {"no name", Variant(u""), u"-"},
        {"unknown name", Variant(u"Height"), u"-"},
        {"Empty", Variant(), u"-"},
        {"Null", Variant(automation::Null{}), u"-"},
        {"True, which is -1", Variant(Boolean(true)), u"-"},
        {"Nothing", Variant(ObjectRef()), u"-"},
    };
    for (const auto& c : cases) {
        const Ref<UserProfileEntry> found = entries_->item(c.index);
        EXPECT_EQ(found ? found->value() : u"-", c.expected) << c.what;
    }
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
    EXPECT_EQ(entries_->item(u"Depth"), second);
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

    // A removed entry no longer takes part in the index.
    named->setName(u"Height");
    add(u"Height", u"new");
    EXPECT_EQ(entries_->item(u"Height")->value(), u"new");
}

TEST_F(UserProfileTest, ClearingRemovesEveryEntryAndReportsEachUnnamedOne) {
    add(u"Width");
    add(u"");
    add(u"Height");
    add(u"");
    entries_->clearAllEntries();
    EXPECT_EQ(entries_->count(), 0);
    EXPECT_EQ(reports().size(), 2u);
    add(u"Width");
    EXPECT_EQ(entries_->count(), 1) << "the name is free again";
}

TEST_F(UserProfileTest, BackReferencesOwnNothingAndOutliveTheirTargetSafely) {
    const std::size_t before = Object::liveCount();
    Ref<UserProfile> profile = make<UserProfile>(platform_);
    Ref<UserProfileEntries> entries = profile->profileEntries();
    const Ref<UserProfileEntry> kept = entries->createNewItem();
    entries->createNewItem();
    EXPECT_EQ(kept->containingProfile(), profile);
    EXPECT_EQ(entries->containingProfile(), profile);

    profile = nullptr;
    EXPECT_EQ(entries->containingProfile(), nullptr);
    EXPECT_EQ(kept->containingProfile(), nullptr);
    EXPECT_EQ(errorOf([&] { kept->saveSetting(); }), errors::ObjectNotSet);
    entries->createNewItem();
    kept->setName(u"Width");
    EXPECT_EQ(entries->item(u"Width"), kept);

    entries = nullptr;
    EXPECT_EQ(Object::liveCount(), before + 1) << "of the component only the entry that is held is left";
    kept->setName(u"Height");
    EXPECT_EQ(kept->containingProfile(), nullptr);
}

// A registry failure reaches the caller with its number, and what was saved before stays saved.
TEST_F(UserProfileTest, AFailedWriteStopsTheSaving) {
    add(u"Width", u"3");
    EXPECT_TRUE(profile_->saveSettings().isTrue());
    entries_->item(std::int32_t{1})->setValue(u"4");
    registry_.refusesWrites = true;
    EXPECT_EQ(errorOf([&] { profile_->saveSettings(); }), registry_errors::ItemMissing);
    EXPECT_EQ(stored("Width"), "3\0"s);
    EXPECT_THAT(reports(), testing::IsEmpty());
}

TEST_F(UserProfileTest, AScriptReachesAllOfItByName) {
    library::Library library(platform_);
    const ObjectRef created = library.create(u"TarnCom32.UserProfile");
    Object& profile = *created;
    profile.put(u"RegistryHive", kRoot);
    profile.put(u"StorageMethod", u"0");
    profile.put(u"ProfilePath", tests::testKey() + u"\\Product");
    profile.put(u"ProfileName", u"Default");
    const ObjectRef entries = automation::toObject(profile.get(u"ProfileEntries"));
    const ObjectRef entry = automation::toObject(entries->call(u"CreateNewItem"));
    entry->put(u"Name", u"Width");
    entry->put(u"Value", std::int16_t{12});
    EXPECT_EQ(profile.call(u"SaveSettings"), Variant(Boolean(true)));
    EXPECT_EQ(stored("Width"), "12\0"s);
    EXPECT_EQ(automation::toObject(entry->get(u"ContainingProfile")), created);
    EXPECT_EQ(automation::toObject(entries->get(u"", u"width")), entry); // Item is the default member
    entries->call(u"RemoveItem", Variant(entry));
    EXPECT_EQ(entries->get(u"Count"), Variant(std::int32_t{0}));
    EXPECT_EQ(profile.call(u"RetrieveSettings"), Variant(Boolean(true)));
    EXPECT_EQ(entries->get(u"Count"), Variant(std::int32_t{1}));
    EXPECT_EQ(errorOf([&] { entries->call(u"RemoveItem", Variant(created)); }), errors::TypeMismatch);
    EXPECT_EQ(errorOf([&] { library.create(u"TarnCom32.UserProfileEntries"); }), errors::CannotCreateObject);
}

} // namespace
} // namespace tarncom32::settings
