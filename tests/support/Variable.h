#pragma once

#include <cstdlib>
#include <string>

namespace test_support {

/// A variable of the environment while this lives.
class Variable {
public:
    Variable(const std::string& name, const std::string& value) : name_(name) { Set(value); }
    ~Variable() { Set(std::string()); }
    Variable(const Variable&) = delete;
    Variable& operator=(const Variable&) = delete;

private:
    void Set(const std::string& value) const
    {
#ifdef _WIN32
        _putenv_s(name_.c_str(), value.c_str()); // An empty one is taken away.
#else
        if (value.empty()) {
            unsetenv(name_.c_str());
        } else {
            setenv(name_.c_str(), value.c_str(), 1);
        }
#endif
    }

    const std::string name_;
};

} // namespace test_support
