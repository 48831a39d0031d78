#pragma once

#include <string>
#include <vector>

#include "core/FieldLayout.h"
#include "nexwire/Export.h"

// What functions read of their answers, noted while they run, for whoever describes the library as a whole.

namespace nexwire::core {

/// A value that was looked for by its path.
struct PathRead {
    std::string path; ///< "data/list/0/guid".
    Kind kind;        ///< StructList for a list, whatever its elements are.
};

/// What one thread read of its answers.
struct AnswerReads {
    bool envelope = false;            ///< The platform's envelope was read.
    const FieldTable* data = nullptr; ///< What its data was read into, the last time it was.
    std::vector<PathRead> paths;      ///< Of an answer of the video wall service, in the order of reading.
};

/// What the calling thread reads from now on is noted in `reads`, which outlives it; null ends that.
NEXWIRE_API void WatchAnswers(AnswerReads* reads) noexcept;

/// Where the calling thread's reading is noted; mostly null.
AnswerReads* WatchedAnswers() noexcept;

} // namespace nexwire::core
