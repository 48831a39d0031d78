#include "core/AnswerReads.h"

namespace nexwire::core {
namespace {

thread_local AnswerReads* watched = nullptr;

} // namespace

void WatchAnswers(AnswerReads* reads) noexcept
{
    watched = reads;
}

AnswerReads* WatchedAnswers() noexcept
{
    return watched;
}

} // namespace nexwire::core
