#pragma once

#include <cstdint>
#include <string>

#include "catalogue/Catalogue.h"

// Calls that are made again: for the next page, or to see how far something is.

namespace nexwire::tools {

/// The page number that the call asks for; 0 when nothing that it sends has one.
std::int64_t PageOf(const catalogue::Call& call);
void AskForPage(catalogue::Call& call, std::int64_t page);

struct PageView {
    std::string lines;       ///< The elements as JSON, one a line.
    std::int64_t count = 0;  ///< Of them.
    std::int64_t total = -1; ///< On all pages; -1: the result does not say.
};
/// @return false when the result has no list.
bool ReadPage(const std::string& result, PageView& page);

struct ProgressView {
    int percent = 0;
    bool finished = false;
};
/// @return false when the result tells no progress.
bool ReadProgress(const std::string& result, ProgressView& progress);

} // namespace nexwire::tools
