#pragma once

#include "automation/string.h"

#include <cstdint>

namespace tarncom32::visio {

/// What an add-on's command line says; 0 and "" where it says nothing.
struct AddonString {
    std::int16_t document = 0;
    std::int16_t page = 0;
    automation::String shape{};
    bool shapeIsUniversalName = false;
    automation::String others{}; ///< every other field, each followed by one blank
};

/// Reads the fields of `text`; see `VisioFunctions::getVisioObjectsFromAddonString`. A number that does not fit 16
/// bits leaves its field as it was.
AddonString parseAddonString(automation::StringView text);

} // namespace tarncom32::visio
