#pragma once

#include <cstdlib>
#include <optional>
#include <string>

namespace zolmara::test {

/// A variable of the environment that has another value as long as this lives.
class EnvironmentValue {
public:
    EnvironmentValue(const char* name, const std::string& value) : name_(name) {
        if (const char* former = std::getenv(name)) former_ = former;
        Set(value);
    }
    ~EnvironmentValue() {
        if (former_)
            Set(*former_);
        else
            unsetenv(name_);
    }
    EnvironmentValue(const EnvironmentValue&) = delete;
    EnvironmentValue& operator=(const EnvironmentValue&) = delete;

    void Set(const std::string& value) const { setenv(name_, value.c_str(), 1); }

private:
    const char* name_;
    std::optional<std::string> former_;
};

}  // namespace zolmara::test
