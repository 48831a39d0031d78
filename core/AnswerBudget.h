#pragma once

#include <cstddef>
#include <cstdint>
#include <exception>

namespace nexwire::core {

/// Thrown where reading an answer would take more memory than it may.
class AnswerTooCostly : public std::exception {
public:
    const char* what() const noexcept override { return "the answer takes too much memory"; }
};

/// Lasts while one text is read, and counts what its tape and its structures take. Inside another one it counts
/// towards that.
class AnswerBudget {
public:
    /// @param textBytes  of the text; it is there already, and what is read of it is at most as long again.
    /// @throws AnswerTooCostly
    explicit AnswerBudget(std::size_t textBytes);
    ~AnswerBudget();
    AnswerBudget(const AnswerBudget&) = delete;
    AnswerBudget& operator=(const AnswerBudget&) = delete;

private:
    bool outermost_;
};

/// Counts memory towards the answer that the calling thread reads; towards nothing while it reads none.
/// @throws AnswerTooCostly
void ChargeAnswer(std::uint64_t bytes);

/// False. Makes `AnswerTooCostly` the last error.
bool ReportTooCostly(std::size_t textBytes) noexcept;

} // namespace nexwire::core
