#pragma once

#include <stdexcept>

namespace tarncom32::cli {

/// The command line asks for something that there is not. `what()` is one line of UTF-8 that says what to do instead;
/// the program ends with exit status 2.
class UsageError : public std::runtime_error {
public:
    using std::runtime_error::runtime_error;
};

} // namespace tarncom32::cli
