#pragma once

#include <string>

#include "nexwire/host/TracingExecutor.h"

namespace nexwire::host {

/// Whether somebody wants to hear of the calling thread's call.
bool Traced();
void TellStep(const char* part, const std::string& text);

/// Tells a step; the text is only made when somebody wants to hear it.
template <class Text>
void Tell(const char* part, const Text& text)
{
    if (Traced()) {
        TellStep(part, text());
    }
}

/// Tells of each attempt that reaches the transport and what became of it. Hands on everything else.
std::unique_ptr<IRequestExecutor> TraceAttempts(std::unique_ptr<IRequestExecutor> transport);

} // namespace nexwire::host
