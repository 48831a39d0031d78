#include "core/AnswerBudget.h"

#include <atomic>
#include <string>

#include <keel/Error.h>

#include "core/Guard.h"
#include "nexwire/AnswerMemory.h"
#include "nexwire/LibraryErrors.h"

namespace nexwire {
namespace core {
namespace {

constexpr std::uint64_t kDefaultLimit = sizeof(void*) >= 8 ? std::uint64_t{2} << 30 : std::uint64_t{512} << 20;

std::atomic<std::uint64_t> g_limit{kDefaultLimit};

struct Counter {
    bool counting = false;
    std::uint64_t left = 0; ///< Bytes.
};

thread_local Counter t_counter;

} // namespace

AnswerBudget::AnswerBudget(std::size_t textBytes) : outermost_(!t_counter.counting)
{
    if (outermost_) {
        t_counter = {true, g_limit};
    }
    try {
        // The text, what is unescaped of it, and the texts of the members.
        ChargeAnswer(std::uint64_t{textBytes} * 3);
    } catch (...) {
        t_counter.counting = !outermost_;
        throw;
    }
}

AnswerBudget::~AnswerBudget()
{
    t_counter.counting = !outermost_;
}

void ChargeAnswer(std::uint64_t bytes)
{
    Counter& counter = t_counter;
    if (!counter.counting) {
        return;
    }
    if (bytes > counter.left) {
        throw AnswerTooCostly();
    }
    counter.left -= bytes;
}

bool ReportTooCostly(std::size_t textBytes) noexcept
{
    static_cast<void>(Guard([&] {
        Keel::Error::ErrorCode error;
        error.category = kAnswerCategory;
        error.number = static_cast<std::int32_t>(AnswerError::TooCostly);
        error.text = "an answer of " + std::to_string(textBytes) + " bytes takes more memory than the limit of " +
                     std::to_string(g_limit) + " bytes (SetAnswerMemoryLimit)";
        Keel::Error::SetLastError(error);
        return true;
    }));
    return false;
}

} // namespace core

void SetAnswerMemoryLimit(std::uint64_t bytes)
{
    core::g_limit = bytes;
}

} // namespace nexwire
