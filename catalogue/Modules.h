#pragma once

#include <vector>

#include "catalogue/Catalogue.h"

namespace nexwire {
namespace catalogue {

/// The modules in the order they are listed. A module is a file beside this one that defines its array of lines with
/// NEXWIRE_MODULE.
const std::vector<Module>& Modules();

#define NEXWIRE_MODULE(Name, ...)                                                                                      \
    namespace {                                                                                                        \
    constexpr Entry k##Name##Entries[] = {__VA_ARGS__};                                                                \
    }                                                                                                                  \
    extern const Module k##Name##Module;                                                                               \
    const Module k##Name##Module = {#Name, k##Name##Entries, sizeof(k##Name##Entries) / sizeof(k##Name##Entries[0])};

} // namespace catalogue
} // namespace nexwire
