#pragma once

#include "src/Guard.h"
#include "src/PlatformClock.h"
#include "src/Store.h"
#include "src/Workbench.h"

namespace nexwire::simulator {

/// What a platform shares with the services beside it.
struct Site {
    Store& store;
    PlatformClock& clock;
    Workbench& workbench;
};

/// What an exchange looks like to whoever watches.
inline Served ToServed(const HttpServer::Done& done, std::int64_t timeMs)
{
    return {timeMs,    done.request.verb, done.target,      done.status,
            done.code, done.requestBytes, done.answerBytes, done.milliseconds};
}

} // namespace nexwire::simulator
