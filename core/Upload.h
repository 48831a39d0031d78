#pragma once

#include <cstdint>
#include <memory>
#include <string>

#include "core/Pipeline.h"

namespace nexwire {

/// How a file goes up: in slices of Keel's default size, each a multipart request of its own.
struct Upload {
    const char* partType;  ///< Content type of the file's part, as "text/csv".
    bool numbered = false; ///< Each request carries the number of its slice, from 1, in a part "index".
    bool closing = false;  ///< A request without a slice, numbered -1, ends the upload; its answer is not read.
};

/// Sends a file to `path` with method code 1.
///
/// False when the file cannot be opened, is empty, or shrinks or fails while it is read (the last error says which),
/// when a request fails, and when the last answer is no envelope; what was sent before is not withdrawn. When the
/// executor fails but left a body, the code of its envelope becomes the last error.
///
/// @param uploadGuid  receives a new identifier before the first slice goes out; it travels in the mark "query" as
///                    "uploadGuid=". Null: the size of the file does, as "totalBytes=".
/// @param file        UTF-8.
/// @param progress    receives whole percent of the bytes accepted, 100 only after the last request; may be empty. The
///                    host may read it from another thread meanwhile.
/// @param answer      receives the body of the last answer on success.
bool UploadInSlices(const Path& path, const Upload& upload, std::string* uploadGuid, const std::string& file,
                    const std::shared_ptr<std::int32_t>& progress, std::string& answer) noexcept;

} // namespace nexwire
