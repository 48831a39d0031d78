#pragma once

#include <string>

#include "core/Pipeline.h"

namespace nexwire {

/// Fetches a file in ranges of 10 MiB, with method code 2, and puts it in the place of `file` when it is complete; on
/// false `file` is as it was. No two ranges are in memory at once.
///
/// A range whose write fails is asked for again, at most three times in a row. Besides failed requests, a
/// `DownloadError` ends it, which is the last error then. An answer may hold less than was asked for as long as it says
/// so.
///
/// @param file  UTF-8; empty is false, and nothing is sent. Nor is it when the file cannot be written.
bool DownloadByRanges(const Path& path, const std::string& file) noexcept;

} // namespace nexwire
