#include "library/library.h"

#include "automation/error.h"

namespace tarncom32::library {

using automation::Error;
using automation::ObjectRef;
using automation::String;
using automation::StringView;

namespace {

[[noreturn]] void refuse(StringView name, StringView reason) {
    throw Error(automation::errors::CannotCreateObject,
                String(automation::descriptionOf(automation::errors::CannotCreateObject)) + u": " + String(name) +
                    u" " + String(reason));
}

ObjectRef createClass(platform::Platform& platform, const CatalogueEntry& entry) {
    if (!entry.create) refuse(entry.name, u"is not built yet in this version");
    return entry.create(platform);
}

} // namespace

ObjectRef Library::create(StringView progId) {
    const CatalogueEntry* entry = findProgId(progId);
    if (!entry) refuse(progId, u"is not the ProgID of a class that can be created");
    return createClass(platform_, *entry);
}

ObjectRef Library::global(StringView className) {
    const CatalogueEntry* entry = findClass(className);
    if (!entry || entry->instancing != frame::Instancing::Global) refuse(className, u"is not a global class");
    ObjectRef& instance = globals_[String(entry->name)];
    if (!instance) instance = createClass(platform_, *entry);
    return instance;
}

} // namespace tarncom32::library
