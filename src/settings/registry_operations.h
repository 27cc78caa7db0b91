#pragma once

#include "automation/collection.h"
#include "platform/platform.h"

namespace tarncom32::settings {

/// The numbered errors of the registry operations. They name no source.
namespace registry_errors {
inline constexpr std::int32_t KeyMissing = 1000;   ///< "Registry Key does not exist"
inline constexpr std::int32_t ItemMissing = 1001;  ///< "Item does not exist for this registry key"; failed writes too
inline constexpr std::int32_t CannotCreate = 1002; ///< "Cannot create key"
inline constexpr std::int32_t CannotDelete = 1003; ///< "Cannot delete key"
} // namespace registry_errors

/// Reads and writes text values of the registry. A key is named by a root (`platform::registry_root`, or any other
/// handle, passed on unchanged) and a path with "\" between its levels.
///
/// Keys are always opened for full access, even to read: a key that the user may only read counts as missing. Texts
/// cross in the 8-bit code page and end at their first NUL. Each operation opens and closes its key, and nothing is
/// cached. Errors go to the caller; from every operation 75 says that the store itself cannot be read.
class RegistryOperations {
public:
    using Key = std::unique_ptr<platform::RegistryKey>;

    explicit RegistryOperations(platform::Platform& platform) : platform_(platform) {}

    /// An open key. When it cannot be opened: null, or with `raiseIfMissing` 1000.
    Key openRegistryKey(std::int32_t root, automation::StringView path, bool raiseIfMissing) const;

    /// Makes sure that the key exists, with the levels above it. Raises 1002.
    void createRegistryKey(std::int32_t root, automation::StringView path) const;

    /// Deletes the subkey `name` of a key; whether that succeeded. It fails when the subkey has subkeys of its own.
    /// With `raise`, 1000 when the key cannot be opened and 1003 when the subkey cannot be deleted.
    bool deleteRegistryKey(std::int32_t root, automation::StringView path, automation::StringView name,
                           bool raise) const;

    /// The value's bytes up to the first NUL, as text, whatever its type. Raises 1001 when there is no such value or
    /// when it has more than 1024 bytes.
    automation::String readKeyValue(platform::RegistryKey& key, automation::StringView name) const;

    /// Stores `text` as a string value: as many bytes as `text` has characters, and one for the NUL. Raises 1001 when
    /// that fails.
    void writeKeyValue(platform::RegistryKey& key, automation::StringView name, automation::StringView text) const;

    /// Raises 1000, and 1001 as `readKeyValue`.
    automation::String getRegistryValue(std::int32_t root, automation::StringView path,
                                        automation::StringView name) const;

    /// Never creates the key. Raises 1000, and 1001 as `writeKeyValue`.
    void setRegistryValue(std::int32_t root, automation::StringView path, automation::StringView name,
                          automation::StringView text) const;

    /// One text for each value of the key, in the registry's order: the name, two backslashes, the data. The list ends,
    /// without an error, in front of the first value whose name has more than 254 characters or whose data has more
    /// than 255 bytes. A missing key gives no values, or raises 1000 with `raiseIfMissing`.
    automation::Ref<automation::Collection> getRegistryValues(std::int32_t root, automation::StringView path,
                                                              bool raiseIfMissing) const;

    /// Makes sure that the key exists and that one of its values seems to be called `name`; if none does, writes an
    /// empty value of that name. A value counts when `name`, as it is spelled, occurs anywhere in its name or its data:
    /// "MaxWidth" passes for "Width". This is meant; values that were saved before depend on it. Raises 1002.
    void ensureRegistryValue(std::int32_t root, automation::StringView path, automation::StringView name) const;

    /// Writes a value, whose key is created when it is missing. Raises 1001 and 1002.
    void saveProfileValue(automation::StringView path, automation::StringView name, automation::StringView text,
                          std::int32_t root) const;

    /// Reads a value. One that is missing, even with its key, is created empty and read as an empty text, unless
    /// another value passes for it (`ensureRegistryValue`): then 1001. Raises 1002 as well.
    automation::String retrieveProfileValue(automation::StringView path, automation::StringView name,
                                            std::int32_t root) const;

private:
    /// Calls `visit(text)` with each text of `getRegistryValues` until it returns false.
    template <class Visit>
    void forEachValue(std::int32_t root, automation::StringView path, bool raiseIfMissing, Visit&& visit) const;
    template <class Step>
    bool attempt(std::int32_t root, automation::StringView path, Step&& step) const;
    std::string narrow(automation::StringView text) const;
    /// Appends the text that `bytes` hold up to their first NUL.
    void widen(std::string_view bytes, automation::String& text) const;

    platform::Platform& platform_;
};

} // namespace tarncom32::settings
