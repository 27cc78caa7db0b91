#pragma once

#include "automation/error.h"

namespace tarncom32::tests {

/// The number of the error that `body` raises; 0 when it raises none.
template <class Body>
std::int32_t errorOf(Body&& body) {
    try {
        body();
    } catch (const automation::Error& error) {
        return error.number();
    }
    return 0;
}

/// The number and the description of that error, as "5 Invalid procedure call or argument"; "" when there is none.
template <class Body>
std::string failureOf(Body&& body) {
    try {
        body();
    } catch (const automation::Error& error) {
        return std::to_string(error.number()) + " " + automation::toUtf8(error.description());
    }
    return {};
}

} // namespace tarncom32::tests
