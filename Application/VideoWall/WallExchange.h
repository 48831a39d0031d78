#pragma once

#include <functional>

#include "Application/VideoWall/WallBody.h"

namespace nexwire {
struct tagTWWallPollingTaskInfo;
}

namespace nexwire::videowall {

/// What is constant about an operation. Some log texts name another operation than the one that runs; whoever searches
/// logs knows them so.
struct WallOperation {
    const char* function; ///< `NEXWIRE_FUNCTION` of the operation, for the places of log entries.
    const char* name;     ///< As log texts have it, with the tag in front.
    const char* path;
    int timeoutMs = 5000;
    const char* requestName = nullptr;  ///< Name in the texts on address and body, if another.
    const char* replyName = nullptr;    ///< Name in the text on the answer, if another.
    const char* sendFailName = nullptr; ///< Name in the text on a failed exchange, if another.
};

using Reader = std::function<void(const Answer&)>;

/// The whole exchange but the text on its success: sends `body` (none if null), makes the answer's message, module and
/// code the last error and, if the code is 0, hands the answer to `read`.
bool ExchangeWithWall(const WallOperation& operation, const Keys* body, const Reader& read = {});

/// An exchange of an operation on decoders, outputs or windows.
bool Post(const WallOperation& operation, const Keys& body, const Reader& read = {});
/// The same without a body.
bool PostNothing(const WallOperation& operation, const Reader& read);
/// An exchange of an operation on polling tasks: its success is logged with the GUID of the task.
bool PostTask(const WallOperation& operation, const tagTWWallPollingTaskInfo& task, const Keys& body,
              const Reader& read = {});
/// The same for an operation on the cameras of a task, which sends nothing and fails when there are none.
bool PostCameras(const WallOperation& operation, const tagTWWallPollingTaskInfo& task, const Keys& body,
                 const Reader& read = {});

} // namespace nexwire::videowall
