#pragma once

// What the pages take for granted: the includes, and the variables that an earlier step of the reader's has made.

#include <iostream>
#include <map>
#include <memory>
#include <mutex>
#include <string>
#include <thread>
#include <vector>

#include <keel/Error.h>
#include <keel/Log.h>

#include "nexwire/AccessController/AccessGroup.h"
#include "nexwire/LastExchange.h"
#include "nexwire/Nexwire.h"
#include "nexwire/ParseJSONUtil.h"
#include "nexwire/Personnel/Person.h"
#include "nexwire/host/CallScope.h"
#include "nexwire/host/ExchangeRecorder.h"
#include "nexwire/host/HttpRequestExecutor.h"
#include "nexwire/host/MakeExecutor.h"
#include "nexwire/host/Pages.h"
#include "nexwire/host/Pool.h"
#include "simulator/Platform.h"

#define SHOWN_ELSEWHERE                                                                                                \
    [[maybe_unused]] nexwire::host::HttpExecutorOptions options, [[maybe_unused]] nexwire::NexwireInitParams params
