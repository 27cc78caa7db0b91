#include "settings/registry_operations.h"

#include "frame/report.h"

#include <algorithm>

namespace tarncom32::settings {

using automation::Collection;
using automation::Error;
using automation::Ref;
using automation::String;
using automation::StringView;
using platform::RegistryRead;
using platform::RegistryValue;

namespace {

// The buffers of the operations, which are their published bounds.
constexpr std::size_t kReadBytes = 1024;
constexpr std::size_t kListNameBytes = 255; // with the NUL
constexpr std::size_t kListDataBytes = 255;
constexpr StringView kSeparator = u"\\\\";

// By number, from the first on.
constexpr StringView kDescriptions[] = {u"Registry Key does not exist", u"Item does not exist for this registry key",
                                        u"Cannot create key", u"Cannot delete key"};

[[noreturn]] void raise(std::int32_t number) {
    throw Error::withoutSource(number, kDescriptions[number - registry_errors::KeyMissing]);
}

bool isOwnError(const Error& error) {
    return error.number() >= registry_errors::KeyMissing && error.number() <= registry_errors::CannotDelete;
}

/// Whether the step succeeded. That nobody can tell what the store holds is no answer to that: it goes to the caller.
template <class Step>
bool succeeds(Step&& step) {
    bool succeeded = true;
    frame::trap(step, [&](const Error& error) {
        if (dynamic_cast<const platform::UnreadableStore*>(&error)) throw;
        succeeded = false;
    });
    return succeeded;
}

} // namespace

std::string RegistryOperations::narrow(StringView text) const {
    return platform_.codePage.encode(text.substr(0, text.find(u'\0')));
}

void RegistryOperations::widen(std::string_view bytes, String& text) const {
    bytes = bytes.substr(0, bytes.find('\0'));
    // Most texts are the same in every code page.
    if (std::ranges::all_of(bytes, [](char byte) { return static_cast<unsigned char>(byte) < 0x80; }))
        text.append(bytes.begin(), bytes.end());
    else
        text += platform_.codePage.decode(bytes);
}

RegistryOperations::Key RegistryOperations::openRegistryKey(std::int32_t root, StringView path,
                                                            bool raiseIfMissing) const {
    Key key = platform_.registry.open(root, narrow(path), platform::RegistryAccess::Full);
    if (!key && raiseIfMissing) raise(registry_errors::KeyMissing);
    return key;
}

void RegistryOperations::createRegistryKey(std::int32_t root, StringView path) const {
    if (!succeeds([&] { platform_.registry.create(root, narrow(path)); })) raise(registry_errors::CannotCreate);
}

bool RegistryOperations::deleteRegistryKey(std::int32_t root, StringView path, StringView name,
                                           bool raiseOnFailure) const {
    const Key parent = openRegistryKey(root, path, raiseOnFailure);
    // The system takes an empty name for the key itself, but that is no subkey.
    const std::string subkey = narrow(name);
    bool deleted = false;
    if (parent && !subkey.empty()) succeeds([&] { deleted = parent->deleteSubkey(subkey); });
    if (!deleted && raiseOnFailure) raise(registry_errors::CannotDelete);
    return deleted;
}

String RegistryOperations::readKeyValue(platform::RegistryKey& key, StringView name) const {
    RegistryValue value;
    if (key.read(narrow(name), kReadBytes, value) != RegistryRead::Done) raise(registry_errors::ItemMissing);
    String text;
    widen(value.bytes, text);
    return text;
}

void RegistryOperations::writeKeyValue(platform::RegistryKey& key, StringView name, StringView text) const {
    std::string bytes = platform_.codePage.encode(text);
    bytes.resize(text.size() + 1, '\0');
    if (!succeeds([&] { key.write(narrow(name), platform::registry_type::kString, bytes); }))
        raise(registry_errors::ItemMissing);
}

String RegistryOperations::getRegistryValue(std::int32_t root, StringView path, StringView name) const {
    return readKeyValue(*openRegistryKey(root, path, true), name);
}

void RegistryOperations::setRegistryValue(std::int32_t root, StringView path, StringView name, StringView text) const {
    writeKeyValue(*openRegistryKey(root, path, true), name, text);
}

template <class Visit>
void RegistryOperations::forEachValue(std::int32_t root, StringView path, bool raiseIfMissing, Visit&& visit) const {
    const Key key = openRegistryKey(root, path, raiseIfMissing);
    RegistryValue value;
    String text;
    for (std::uint32_t i = 0; key && key->valueAt(i, kListNameBytes, kListDataBytes, value) == RegistryRead::Done;
         ++i) {
        text.clear();
        widen(value.name, text);
        text += kSeparator;
        widen(value.bytes, text);
        if (!visit(text)) return;
    }
}

Ref<Collection> RegistryOperations::getRegistryValues(std::int32_t root, StringView path, bool raiseIfMissing) const {
    const Ref<Collection> values = automation::make<Collection>();
    forEachValue(root, path, raiseIfMissing, [&](const String& text) {
        values->add(text);
        return true;
    });
    return values;
}

/// Takes a step of `ensureRegistryValue`; whether it succeeded. When one of the operations' own errors stopped it, the
/// key is created. A store that cannot be read is another matter: to go on would write over values that are there.
template <class Step>
bool RegistryOperations::attempt(std::int32_t root, StringView path, Step&& step) const {
    try {
        step();
        return true;
    } catch (const Error& error) {
        if (!isOwnError(error)) throw;
    }
    createRegistryKey(root, path);
    return false;
}

void RegistryOperations::ensureRegistryValue(std::int32_t root, StringView path, StringView name) const {
    attempt(root, path, [&] { openRegistryKey(root, path, true); });
    bool present = false;
    attempt(root, path, [&] {
        forEachValue(root, path, true, [&](const String& text) {
            present = text.find(name) != String::npos;
            return !present;
        });
    });
    if (!present) attempt(root, path, [&] { setRegistryValue(root, path, name, {}); });
}

void RegistryOperations::saveProfileValue(StringView path, StringView name, StringView text, std::int32_t root) const {
    ensureRegistryValue(root, path, name);
    setRegistryValue(root, path, name, text);
}

String RegistryOperations::retrieveProfileValue(StringView path, StringView name, std::int32_t root) const {
    ensureRegistryValue(root, path, name);
    return getRegistryValue(root, path, name);
}

} // namespace tarncom32::settings
