#pragma once

#include <string>

namespace nexwire {

/// Device identifiers as the server expects them in paths: exactly 32 characters (bytes). A longer one is cut to its
/// last 10, the serial number, without regard to where a character of several bytes begins; what is shorter than 32
/// is filled up with "$".
namespace guid {

/// Whether the path cannot carry it in full.
bool IsLong(const std::string& deviceGuid);

/// Brings an identifier to length. The log receives both texts under the name of the request.
///
/// @param function  `NEXWIRE_FUNCTION` of the request, for the place of the log entry; below as well.
std::string Supply(const char* function, const char* request, const std::string& deviceGuid);

/// The same in the way of channels: the log receives the identifier before and after it is filled up.
std::string SupplyForChannel(const char* function, const char* request, const std::string& deviceGuid);

/// One line of the log.
void LogSerial(const char* function, const char* request, const std::string& serial);

} // namespace guid
} // namespace nexwire
