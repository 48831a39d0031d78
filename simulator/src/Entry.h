#pragma once

#include <initializer_list>
#include <stdexcept>
#include <string>
#include <string_view>
#include <vector>

#include "src/Description.h"

// Reading entries of resource files. What does not fit throws std::runtime_error, which names what is wrong.

namespace nexwire::simulator {

/// A text or a list of texts; empty for null.
std::vector<std::string> Texts(const Json* list);

/// Refuses an object with other members: a misspelled one would be a rule that silently does not hold.
void OnlyMembers(const Json& object, std::initializer_list<std::string_view> allowed);

std::string NeedText(const Json& object, std::string_view name);

/// An object that tells the collections of members.
std::vector<Reference> References(const Json* entry);

template <class Each>
void ForEach(const Json* list, const Each& each)
{
    if (list == nullptr) {
        return;
    }
    if (!list->IsArray()) {
        throw std::runtime_error("expected a list");
    }
    for (const Json& entry : list->GetArray()) {
        each(entry);
    }
}

template <class Each>
void ForMembers(const Json* object, const Each& each)
{
    if (object == nullptr) {
        return;
    }
    if (!object->IsObject()) {
        throw std::runtime_error("expected an object");
    }
    for (const auto& member : object->GetObject()) {
        each(std::string(AsText(&member.name)), member.value);
    }
}

} // namespace nexwire::simulator
