#pragma once

#include <cstdint>
#include <functional>
#include <memory>
#include <string>

#include "simulator/Platform.h"

namespace nexwire::simulator {

/// The video wall service of the local platform: decoders with their outputs, one wall of screens, windows, streams and
/// polling tasks, on a port of its own on 127.0.0.1. The state lives in memory, or in the database of a platform.
///
/// Vocabulary: cells, sub-windows and rows count from 0, outputs from 1. A decoder's loginStatus is 0 while it is being
/// logged in to, 1 after that, 2 when it refused the account, 3 when it does not answer. A task's isRunning is 0 when
/// stopped, 1 when it runs, 2 when suspended, 3 when marked as disturbed; optType is 1 for the camera before, 2 for the
/// one behind. Nobody answers at addresses of 192.0.2.*, so a decoder there never logs in.
///
/// `Start`, `Stop` and the destructor belong to one thread at a time; `Port` may be called from any.
class VideoWallService {
public:
    struct Options {
        std::uint16_t port = 0; ///< 0 takes a free one; see `Port`.
        unsigned threads = 2;   ///< Worker threads, 1 to 64.
        double timeScale = 1.0; ///< How fast time passes for logins and polling; 60 makes a minute a second.

        std::string username = "admin";    ///< Account that decoders accept.
        std::string password = "admin123"; ///< Its password.

        int outputs = 4;     ///< Outputs of a decoder.
        int rows = 4;        ///< Rows of screens of the wall.
        int cols = 8;        ///< Columns of screens of the wall.
        int maxWindows = 16; ///< Windows that one decoder opens.

        std::uint64_t bodyLimit = 4u * 1024u * 1024u; ///< Largest accepted request body in bytes.
        unsigned idleSeconds = 60;                    ///< A connection that is silent so long is closed.
        /// Called once per exchange on a worker thread, one call at a time. Must not stop the service.
        std::function<void(const Served&)> onExchange;
        /// Replaces the clock: milliseconds since 1970 UTC. Must be callable from any thread.
        std::function<std::int64_t()> now;
        /// A running platform to belong to: the wall is kept in its database, goes by its clock (unless `now` says
        /// otherwise), is shown by its workbench, and its rules for faults strike here, too. Must run until this
        /// service is stopped. Null: the service stands alone.
        Platform* platform = nullptr;
    };

    VideoWallService(); ///< With the default options.
    explicit VideoWallService(Options options);
    ~VideoWallService(); ///< Stops.
    VideoWallService(const VideoWallService&) = delete;
    VideoWallService& operator=(const VideoWallService&) = delete;

    /// Binds the port and starts the workers; returns once connections are accepted. The wall is empty then, unless a
    /// platform has kept one.
    ///
    /// @param error  on false, what an operator can act on.
    bool Start(std::string& error);

    /// Closes every connection and ends the workers. A stopped service may be started again.
    void Stop();

    std::uint16_t Port() const; ///< 0 while stopped.

private:
    class Impl;
    std::unique_ptr<Impl> impl_;
};

} // namespace nexwire::simulator
