#pragma once

#include <cstdlib>
#include <optional>
#include <string>

namespace tarncom32::tests {

/// Sets a variable of the environment for the length of a scope.
class EnvironmentVariable {
public:
    EnvironmentVariable(const char* name, const std::string& value) : name_(name) {
        if (const char* before = std::getenv(name)) before_ = before;
        set(value);
    }
    ~EnvironmentVariable() {
        if (before_)
            set(*before_);
        else
            unsetenv(name_);
    }
    EnvironmentVariable(const EnvironmentVariable&) = delete;

    void set(const std::string& value) { setenv(name_, value.c_str(), 1); }

private:
    const char* name_;
    std::optional<std::string> before_;
};

} // namespace tarncom32::tests
