#pragma once

#include <cstdlib>
#include <optional>
#include <string>

namespace tarncom32::tests {

/// Sets a variable of the environment for the length of a scope.
class EnvironmentVariable {
public:
    /// Without a value the variable is unset.
    EnvironmentVariable(const char* name, const std::optional<std::string>& value) : name_(name) {
        if (const char* before = std::getenv(name)) before_ = before;
        set(value);
    }
    ~EnvironmentVariable() { set(before_); }
    EnvironmentVariable(const EnvironmentVariable&) = delete;

    void set(const std::optional<std::string>& value) {
        if (value)
            setenv(name_, value->c_str(), 1);
        else
            unsetenv(name_);
    }

private:
    const char* name_;
    std::optional<std::string> before_;
};

} // namespace tarncom32::tests
