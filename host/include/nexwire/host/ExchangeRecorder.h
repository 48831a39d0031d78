#pragma once

#include <cstddef>
#include <memory>
#include <string>

#include "nexwire/IRequestExecutor.h"

namespace nexwire::host {

/// Hands every request to another executor and appends the exchange to a file, one JSON object per line:
///
///     {"time":"2024-05-06T07:08:09.123Z","method":2,"path":"/…","headers":{},"params":{},"body":"…",
///      "timeoutMs":40000,"answered":true,"elapsedMs":12,
///      "response":{"headers":{},"body":"…"},"error":{"category":0,"number":0,"text":""}}
///
/// "error" is there only when the exchange failed; a body that is not UTF-8 stands as "bodyBase64". Secrets are
/// replaced by "***" before they reach the file, as `Keel::CRedactor` does: secret keys of JSON, header fields of such
/// names, user and password of addresses. Numbers that are no credentials stay what they are. A line is in the file
/// when `Execute` returns. A file that did not exist is created for its owner only, and not through a link.
///
/// Safe from any number of threads; lines stand in the order in which the exchanges ended. The result and the last
/// error are those of the other executor.
class RecordingExecutor : public IRequestExecutor {
public:
    /// @param inner  does the work; owned from here on, must not be null.
    /// @param file   UTF-8 path of the file to append to.
    RecordingExecutor(std::unique_ptr<IRequestExecutor> inner, const std::string& file);
    ~RecordingExecutor() override;

    RecordingExecutor(const RecordingExecutor&) = delete;
    RecordingExecutor& operator=(const RecordingExecutor&) = delete;

    /// Whether every exchange so far is in the file. An exchange that cannot be recorded still takes place.
    bool Good() const;

    bool Execute(RspInfos& response, const RequestParams& request, int flag) override;

    /// The executor that does the work.
    IRequestExecutor& Inner();

private:
    struct State;
    std::unique_ptr<State> state_;
};

/// Answers from a file that `RecordingExecutor` wrote, without any network.
///
/// A request takes the first exchange not yet used with the same method code, path and body (secrets count as equal),
/// or else the first not yet used with the same method code and path. A recorded failure comes back as one, with its
/// last error. Time-outs, header fields and durations play no part. Safe from any number of threads.
class ReplayExecutor : public IRequestExecutor {
public:
    enum class WhenUsedUp {
        Fail,       ///< A request beyond the recorded ones fails.
        RepeatLast, ///< The exchange that was used last for the method code and path answers again.
    };

    /// Reads the whole file. A last line that was cut off is left out.
    explicit ReplayExecutor(const std::string& file, WhenUsedUp whenUsedUp = WhenUsedUp::Fail);
    ~ReplayExecutor() override;

    ReplayExecutor(const ReplayExecutor&) = delete;
    ReplayExecutor& operator=(const ReplayExecutor&) = delete;

    /// Whether the file was read. If not, every call fails with `HostError::FileFailed`.
    bool Valid() const;

    /// What is wrong with the file, with the number of the line; empty when nothing is.
    const std::string& Problem() const;

    /// Exchanges of the file.
    std::size_t Size() const;

    /// @return what was recorded; false with `HostError::NothingRecorded` when nothing fits.
    bool Execute(RspInfos& response, const RequestParams& request, int flag) override;

private:
    struct State;
    std::unique_ptr<State> state_;
};

} // namespace nexwire::host
