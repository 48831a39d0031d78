#pragma once

#include <string>
#include <vector>

#include "Person.h"

// The same reading and writing done with other libraries, the way their own documentation does it.

namespace bench {

/// A typed read of the answer; false when it is not what `AnswerWith` makes.
using ReadPeer = bool (*)(const std::string& answer, std::vector<PlainPerson>& persons);

bool ReadWithNlohmann(const std::string& answer, std::vector<PlainPerson>& persons);
bool ReadWithRapidJson(const std::string& answer, std::vector<PlainPerson>& persons);
/// Needs 64 readable bytes behind the text, which `answer.capacity()` must provide.
bool ReadWithSimdjson(const std::string& answer, std::vector<PlainPerson>& persons);

/// {"personAddParam":{"personList":[...]}}, indented by one tab per level.
std::string WriteWithNlohmann(const std::vector<PlainPerson>& persons);
std::string WriteWithRapidJson(const std::vector<PlainPerson>& persons);

} // namespace bench
