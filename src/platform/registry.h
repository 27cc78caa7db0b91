#pragma once

#include "automation/error.h"

#include <cstddef>
#include <cstdint>
#include <memory>
#include <string>
#include <string_view>

/// The registry: a tree of keys, each with values that have a name, a type and bytes.
///
/// Names are 8-bit texts of the platform's code page, compared without regard to case; the spelling of the first
/// writer stays. A path has "\" between its levels; the empty path is the root itself, and a path that begins with "\"
/// is invalid and names no key. Whatever a store cannot read or write for its own reasons is an `automation::Error`
/// that says what happened, and never looks like an absent value: `UnreadableStore` where nobody can tell what it
/// holds.
namespace tarncom32::platform {

/// The predefined root keys, numbered as the system numbers them.
namespace registry_root {
inline constexpr std::int32_t kClassesRoot = -2147483647 - 1;
inline constexpr std::int32_t kCurrentUser = -2147483647;
inline constexpr std::int32_t kLocalMachine = -2147483646;
inline constexpr std::int32_t kUsers = -2147483645;
inline constexpr std::int32_t kCurrentConfig = -2147483643;
inline constexpr std::int32_t kDynamicData = -2147483642;
} // namespace registry_root

/// Types of values, numbered as the system numbers them.
namespace registry_type {
inline constexpr std::uint32_t kNone = 0;
inline constexpr std::uint32_t kString = 1;         ///< text and a zero byte
inline constexpr std::uint32_t kExpandString = 2;   ///< text with environment variables in percent signs
inline constexpr std::uint32_t kBinary = 3;         ///< bytes
inline constexpr std::uint32_t kDword = 4;          ///< a 32-bit number, lowest byte first
inline constexpr std::uint32_t kDwordBigEndian = 5; ///< a 32-bit number, highest byte first
inline constexpr std::uint32_t kMultiString = 7;    ///< texts, each with a zero byte, then one more zero byte
inline constexpr std::uint32_t kQword = 11;         ///< a 64-bit number, lowest byte first
} // namespace registry_type

/// What a key is opened for.
enum class RegistryAccess : std::uint8_t {
    Read, ///< to look at it
    Full, ///< for anything; refused where the user may only read
};

struct RegistryValue {
    std::string name{};
    std::uint32_t type = registry_type::kNone;
    std::string bytes{};
};

/// What became of reading a value within bounds.
enum class RegistryRead : std::uint8_t {
    Done,
    Absent, ///< there is no such value
    TooBig, ///< the value is there and does not fit
};

/// An open key; destroying it closes it.
class RegistryKey {
public:
    virtual ~RegistryKey() = default;

    /// Reads the value `name` into `value` if it has at most `dataLimit` bytes; else `value` is unspecified.
    virtual RegistryRead read(std::string_view name, std::size_t dataLimit, RegistryValue& value) = 0;

    /// Reads the value at `index`, counted from 0, if its name and a zero byte fit into `nameLimit` bytes and its data
    /// into `dataLimit`; else `value` is unspecified. The order is the store's own and stays while nobody writes.
    virtual RegistryRead valueAt(std::uint32_t index, std::size_t nameLimit, std::size_t dataLimit,
                                 RegistryValue& value) = 0;

    /// Reads the name of the subkey at `index`, counted from 0; false when there are not so many.
    virtual bool subkeyAt(std::uint32_t index, std::string& name) = 0;

    /// Creates or replaces the value `name`. When this returns the value is safe: it survives the end of the process
    /// and of the machine. Raises what kept it from being written.
    virtual void write(std::string_view name, std::uint32_t type, std::string_view bytes) = 0;

    /// Deletes the value `name`; false when there is none.
    virtual bool deleteValue(std::string_view name) = 0;

    /// Deletes the subkey `path` with its values; false when it does not exist or has subkeys of its own.
    virtual bool deleteSubkey(std::string_view path) = 0;
};

/// The store is damaged, another program's, held by one, or without a place. Every operation that meets it raises this,
/// as 75.
class UnreadableStore final : public automation::Error {
public:
    explicit UnreadableStore(automation::StringView description)
        : Error(automation::errors::PathFileAccess, description) {}
};

class Registry {
public:
    virtual ~Registry() = default;

    /// Opens a key that exists; null when it does not, or when `access` is refused.
    virtual std::unique_ptr<RegistryKey> open(std::int32_t root, std::string_view path, RegistryAccess access) = 0;

    /// Opens a key for full access and creates it, with the levels above it, where it does not exist. Raises what kept
    /// it from being created.
    virtual std::unique_ptr<RegistryKey> create(std::int32_t root, std::string_view path) = 0;
};

/// Where there is none: no key exists, and creating one raises 75.
Registry& noRegistry();

} // namespace tarncom32::platform
