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

/// The description of that error.
template <class Body>
automation::String errorTextOf(Body&& body) {
    try {
        body();
    } catch (const automation::Error& error) {
        return error.description();
    }
    return {};
}

} // namespace tarncom32::tests
