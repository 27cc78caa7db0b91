#include "library/library.h"

#include "automation/error.h"
#include "files/common_dlg.h"
#include "files/file_operations.h"
#include "library/enums.h"
#include "settings/user_profile.h"
#include "settings/user_profile_entries.h"
#include "text/string_functions.h"
#include "visio/visio_functions.h"

namespace tarncom32::library {

using automation::Error;
using automation::ObjectRef;
using automation::String;
using automation::StringView;

namespace {

template <class C>
constexpr BuiltClass creatable() {
    return {&C::describe, [](platform::Platform& platform) -> ObjectRef { return automation::make<C>(platform); }};
}

template <class C>
constexpr BuiltClass notCreatable() {
    return {&C::describe, nullptr};
}

constexpr BuiltClass kBuiltClasses[] = {
    creatable<visio::VisioFunctions>(),         creatable<text::StringFunctions>(),
    creatable<files::FileOperations>(),         creatable<files::CommonDlg>(),
    creatable<settings::UserProfile>(),         notCreatable<settings::UserProfileEntries>(),
    notCreatable<settings::UserProfileEntry>(), {&describeEnums, nullptr},
};

[[noreturn]] void refuse(StringView name, StringView reason) {
    throw Error(automation::errors::CannotCreateObject,
                String(automation::descriptionOf(automation::errors::CannotCreateObject)) + u": " + String(name) +
                    u" " + String(reason));
}

ObjectRef createClass(platform::Platform& platform, const frame::CatalogueEntry& entry) {
    const BuiltClass* built = findBuiltClass(entry.name);
    if (!built) refuse(entry.name, u"is not built yet in this version");
    return built->create(platform);
}

} // namespace

std::span<const BuiltClass> builtClasses() {
    return kBuiltClasses;
}

const BuiltClass* findBuiltClass(StringView className) {
    for (const BuiltClass& built : kBuiltClasses)
        if (automation::equalsIgnoreCase(built.describe().name, className)) return &built;
    return nullptr;
}

ObjectRef Library::create(StringView progId) {
    const frame::CatalogueEntry* entry = frame::findProgId(progId);
    if (!entry) refuse(progId, u"is not the ProgID of a class that can be created");
    return createClass(platform_, *entry);
}

ObjectRef Library::global(StringView className) {
    const frame::CatalogueEntry* entry = frame::findClass(className);
    if (!entry || entry->instancing != frame::Instancing::Global) refuse(className, u"is not a global class");
    ObjectRef& instance = globals_[String(entry->name)];
    if (!instance) instance = createClass(platform_, *entry);
    return instance;
}

} // namespace tarncom32::library
