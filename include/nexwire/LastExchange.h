#pragma once

#include <cstdint>
#include <string>

#include "nexwire/Export.h"

namespace nexwire {

/// What became of a thread's most recent call. A false result says that a call failed; this says where.
struct NEXWIRE_API ExchangeRecord {
    std::string path;          ///< Path of the request, identifiers included.
    std::int32_t method = 0;   ///< Method code: 0 read, 1 write, 2 query, 3 remove.
    bool sent = false;         ///< The executor was asked. False: not initialised, no executor or out of memory.
    bool answered = false;     ///< The executor returned an answer. False: see `Keel::Error::GetLastError`.
    bool parsed = false;       ///< The answer was an envelope. False: it was empty or not JSON.
    bool coded = false;        ///< The envelope had a readable code. False: category and number are 0 by default.
    std::int32_t category = 0; ///< First number of the envelope's code.
    std::int32_t number = 0;   ///< Second number of the envelope's code; 0 is success.
    std::string message;       ///< The envelope's message.
};

/// The calling thread's record; requests that a function makes on the way (encryption, say) leave no trace in it.
/// Valid until that thread's next call. Other threads have records of their own.
NEXWIRE_API const ExchangeRecord& LastExchange();

} // namespace nexwire
