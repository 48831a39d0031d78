#pragma once

#include <string>

#include <cjson/cJSON.h>

#include "core/Arena.h"

namespace nexwire {
namespace core {

/// Reads text into a tree that lives in the arena, nodes and texts alike: the tree that cJSON's parser would make of
/// it, at a fraction of the cost of one allocation per node, key and text.
///
/// Null for whatever is not plain JSON to the letter, and when memory ran out: cJSON's parser, which is more lenient,
/// has the last word on that.
const cJSON* ReadPlainJson(Arena& arena, const std::string& text);

} // namespace core
} // namespace nexwire
