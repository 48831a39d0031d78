#pragma once

#include <cstdint>
#include <string>

#include "nexwire/RequestRecords.h"
#include <keel/Error.h>

namespace nexwire::host {

/// One line of a file of exchanges.
struct RecordedExchange {
    std::int32_t method = 0;
    std::string path;
    std::string body; ///< Of the request, without secrets.
    bool answered = false;
    RspInfos response;
    Keel::Error::ErrorCode error; ///< Last error of a failed exchange.
};

/// The line for an exchange, line end included, secrets replaced.
std::string WriteExchange(const RequestParams& request, const RspInfos& response, bool answered,
                          const Keel::Error::ErrorCode& error, const std::string& time, std::int64_t elapsedMs);

/// Reads a line. On failure `problem` says what is wrong and the result is false.
bool ReadExchange(const std::string& line, RecordedExchange& exchange, std::string& problem);

} // namespace nexwire::host
