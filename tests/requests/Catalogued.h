#pragma once

#include <string>
#include <vector>

#include "catalogue/Catalogue.h"

namespace requests {

using nexwire::catalogue::Argument;
using nexwire::catalogue::Function;
using nexwire::catalogue::Outcome;
using nexwire::catalogue::Shape;

/// The functions that a row can mean: "Class::function", or "Class::function<Type>" with a type of an argument.
std::vector<const Function*> Meant(const std::string& name);

/// The place of the argument that the header calls so; as many as there are when none is.
std::size_t PlaceOf(const Function& function, const std::string& argument);

/// One call, whose results are within reach before it is made, too.
class Invocation {
public:
    explicit Invocation(const Function& function);
    ~Invocation();
    Invocation(const Invocation&) = delete;
    Invocation& operator=(const Invocation&) = delete;

    /// Gives an argument its value, results included. False when the text does not fit.
    bool Set(std::size_t place, const std::string& text);
    void Set(std::size_t place, const Keel::Error::ErrorCode& error);
    /// A plain record in which every list has an element.
    void Sample(std::size_t place);
    std::string Json(std::size_t place) const;
    Outcome Run();

private:
    const Function& function_;
    std::vector<void*> values_;
};

} // namespace requests
