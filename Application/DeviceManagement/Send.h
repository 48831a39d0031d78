#pragma once

#include "Application/PassThrough/PassThrough.h"

namespace nexwire {

/// How the requests about devices end: as `Exchange` does, and the code that a failed exchange left in its answer
/// becomes the last error.
template <class... Result>
bool Send(Operation operation, Result&... result) noexcept
{
    return Exchange(operation.ErrorFromAnswer(), result...);
}

} // namespace nexwire
