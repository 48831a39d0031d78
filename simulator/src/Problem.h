#pragma once

#include <stdexcept>
#include <string>

namespace nexwire::simulator {

/// Why the workbench cannot do what it was asked for.
class Problem : public std::runtime_error {
public:
    Problem(unsigned status, const std::string& text) : std::runtime_error(text), status_(status) {}
    unsigned Status() const { return status_; }

private:
    unsigned status_;
};

} // namespace nexwire::simulator
