#pragma once

#include "automation/guid.h"
#include "automation/variant.h"

#include <span>

/// The public record types.
namespace tarncom32::frame {

/// A field of a record: a 32-bit word, several of them, or another record.
struct RecordField {
    automation::StringView name;
    automation::StringView record; ///< the name of the record that the field is; empty for words
    int count = 1;                 ///< how many words
};

struct RecordInfo {
    automation::StringView name;
    automation::StringView help;
    automation::Guid guid;
    std::span<const RecordField> fields;
};

/// All public records; each stands behind those that it contains.
std::span<const RecordInfo> records();

} // namespace tarncom32::frame
