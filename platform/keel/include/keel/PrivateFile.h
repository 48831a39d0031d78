#pragma once

#include <string>

#include "keel/Export.h"

namespace Keel {

/// Makes an empty file that only its owner may read and write, unless there is a file. It is never there with other
/// rights, not even for a moment, and a link that somebody laid to a place without a file is not followed. On Windows
/// the folder decides who may read it. Any thread.
///
/// @param file  UTF-8 path.
/// @return false when there is no file that can be written to; errno says why.
KEEL_API bool MakePrivateFile(const std::string& file);

} // namespace Keel
