// The variables of the process's environment, for tests that set them.
#pragma once

#include <cstdlib>
#include <optional>
#include <string>

namespace tessarin::testing {

inline std::optional<std::string> environmentVariable(const std::string& name) {
    const char* value = std::getenv(name.c_str());
    return value ? std::optional<std::string>(value) : std::nullopt;
}

// Without a value the variable is taken away.
inline void setEnvironmentVariable(const std::string& name, const std::optional<std::string>& value) {
#if defined(_WIN32)
    _putenv_s(name.c_str(), value.value_or("").c_str());
#else
    if (value)
        ::setenv(name.c_str(), value->c_str(), 1);
    else
        ::unsetenv(name.c_str());
#endif
}

// A variable that has a value for the length of a scope.
class EnvironmentVariable {
public:
    EnvironmentVariable(std::string name, const std::optional<std::string>& value)
        : name_(std::move(name)), before_(environmentVariable(name_)) {
        setEnvironmentVariable(name_, value);
    }
    ~EnvironmentVariable() { setEnvironmentVariable(name_, before_); }
    EnvironmentVariable(const EnvironmentVariable&) = delete;
    EnvironmentVariable& operator=(const EnvironmentVariable&) = delete;

private:
    std::string name_;
    std::optional<std::string> before_;
};

} // namespace tessarin::testing
