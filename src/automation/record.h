#pragma once

#include "automation/guid.h"
#include "automation/string.h"

#include <concepts>
#include <cstdint>
#include <memory>
#include <span>

namespace tarncom32::automation {

/// A field of a published record: a 32-bit word, several of them, or another record.
struct RecordField {
    StringView name;
    StringView record; ///< the name of the record that the field is; empty for words
    int count = 1;     ///< how many words
};

/// The description of a published record, by which type libraries show it and callers' records are recognised.
struct RecordInfo {
    StringView name;
    StringView help;
    Guid guid;
    std::uint32_t size; ///< in bytes, the same on all systems
    std::span<const RecordField> fields;
};

/// A C++ structure that is a published record: a plain one, laid out as its `static constexpr RecordInfo kRecord` says.
/// Members take it as `R&`, which is the caller's own, at the caller's own address.
template <class R>
concept PublishedRecord = requires {
    { R::kRecord } -> std::convertible_to<const RecordInfo&>;
    requires std::is_standard_layout_v<R> && std::is_trivially_copyable_v<R>;
};

/// A user-defined record as a value: copies refer to the same fields. The library looks inside records that it
/// publishes itself, and passes others on.
struct Record {
    std::shared_ptr<void> owner; ///< keeps the fields; null for a caller's own, which are there for one call only
    void* fields = nullptr;      ///< where they stand
    Guid type{};
    std::uint32_t size = 0; ///< in bytes
    bool isForeign = false; ///< `owner` is the value as its own system has it

    /// A record with all its words 0, for calls to members that fill one.
    template <PublishedRecord R>
    static Record make() {
        auto fresh = std::make_shared<R>();
        void* fields = fresh.get();
        return {std::move(fresh), fields, R::kRecord.guid, sizeof(R), false};
    }
    /// The fields, if it is an `R`; else null.
    template <PublishedRecord R>
    R* as() const {
        return type == R::kRecord.guid && size == sizeof(R) ? static_cast<R*>(fields) : nullptr;
    }

    friend bool operator==(const Record& left, const Record& right) noexcept { return left.fields == right.fields; }
};

} // namespace tarncom32::automation
